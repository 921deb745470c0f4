#include "vexrocproc/ROCComparisonOutStats.h"

#include "host/VexMV.h"
#include "inference/TestAndInterval.h"
#include "stats/RocIndependCompare.h"
#include "stats/RocPairedCompare.h"
#include "vexrocproc/ROCOutBase.h"

#include <tuple>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

namespace {

/// A paired comparison forms the standard error from exact sums: for areas that hardly differ, the root of the rounded
/// variances less twice the covariance would lose its digits.
double stdErrorOfDifference(double stdError1, double stdError2, const ROCComparisonStats& comparison)
{
    if (dynamic_cast<const RocIndependCompare*>(&comparison) != nullptr)
        return independentStdError(stdError1, stdError2);
    if (VexMV::IsMissing(stdError1) || VexMV::IsMissing(stdError2))
        return VexMV::Missing();
    if (const auto* paired = dynamic_cast<const RocPairedCompare*>(&comparison))
        return paired->getStdErrorDiff();
    return pairedStdError(stdError1 * stdError1, stdError2 * stdError2, comparison.getCovariance());
}

} // namespace

ROCComparisonOutStats::ROCComparisonOutStats(ROCOutBase& first, ROCOutBase& second, ROCComparisonStats& comparison)
    : compare1_(&first), compare2_(&second), zStats_(comparison.getZ()), asymptoticSig_(comparison.getZSig()),
      aucDiff_(areaDifference(first.getArea(), second.getArea())),
      stdErrorDiff_(stdErrorOfDifference(first.getStdError(), second.getStdError(), comparison))
{
    std::tie(ciLower_, ciUpper_) = comparison.getZInterval();
}

} // namespace ROCALG_920
