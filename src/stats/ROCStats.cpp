#include "stats/ROCStats.h"

namespace ROCALG_920 {

ROCStats::~ROCStats() = default;

} // namespace ROCALG_920
