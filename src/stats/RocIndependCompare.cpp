#include "stats/RocIndependCompare.h"

#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "inference/TestAndInterval.h"
#include "stats/ROCIndependentStats.h"

namespace ROCALG_920 {

using VexCommon_920::VexMV;

RocIndependCompare::RocIndependCompare(ROCIndependentStats& first, ROCIndependentStats& second, double confidenceLevel)
    : z_(VexMV::Missing()), zSig_(VexMV::Missing()), covariance_(VexMV::Missing()), confidenceLevel_(confidenceLevel),
      zCritical_(criticalValue(confidenceLevel)), ciLower_(VexMV::Missing()), ciUpper_(VexMV::Missing()), first_(first),
      second_(second)
{
}

bool RocIndependCompare::computeStats(VexCommon_920::MultiPassRecordIter&)
{
    if (!first_.getROCSpace().hasBothStates() || !second_.getROCSpace().hasBothStates())
        return false;
    const double se = independentStdError(first_.getStdError(), second_.getStdError());
    const DifferenceTest test = testDifference(areaDifference(first_.getArea(), second_.getArea()), se, zCritical_);
    z_ = test.z;
    zSig_ = test.significance;
    ciLower_ = test.lower;
    ciUpper_ = test.upper;
    return true;
}

} // namespace ROCALG_920
