#include "host/CancelFlag.h"

namespace VexCommon_920 {

bool CancelFlag::IsCancelRequested() { return requested_.load(std::memory_order_relaxed); }

} // namespace VexCommon_920
