#include "stats/RocIndependCompare.h"

#include "inference/TestAndInterval.h"
#include "space/SpaceSummary.h"
#include "stats/ROCIndependentStats.h"

namespace ROCALG_920 {

RocIndependCompare::RocIndependCompare(ROCIndependentStats& first, ROCIndependentStats& second, double confidenceLevel)
    : zCritical_(criticalValue(confidenceLevel)), first_(first), second_(second)
{
}

bool RocIndependCompare::computeStats(VexCommon_920::MultiPassRecordIter&)
{
    if (!SpaceSummary(first_.getROCSpace()).counts().bothStates()
        || !SpaceSummary(second_.getROCSpace()).counts().bothStates())
        return false;
    const double se = independentStdError(first_.getStdError(), second_.getStdError());
    test_ = testDifference(areaDifference(first_.getArea(), second_.getArea()), se, zCritical_);
    return true;
}

} // namespace ROCALG_920
