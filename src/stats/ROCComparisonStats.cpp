#include "stats/ROCComparisonStats.h"

namespace ROCALG_920 {

ROCComparisonStats::~ROCComparisonStats() = default;

} // namespace ROCALG_920
