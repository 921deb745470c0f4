#include "arraycalls/arrayInput.h"
#include "arraycalls/results.h"
#include "inference/TestAndInterval.h"
#include "stats/ROCIndependentStats.h"
#include "vexrocproc/arraycalls.h"
#include "vexrocproc/optionwords.h"

#include <tuple>

namespace ROCALG_920::arraycalls {
namespace {

auc_res area(const ArrayInput& input, const char* include, const char* larger, const char* distribution,
             double confidenceLevel)
{
    const bool largerTestMorePositive = isLarger(larger);
    ROCSpace space(isInclude(include), largerTestMorePositive, false, false, true);
    fill(space, input);
    const bool equallyMany = space.getPositiveCount() == space.getNegtiveCount();
    const ROCConst_920::Distribution assumption = isNonParamDist(distribution) || !equallyMany
        ? ROCConst_920::NonParametric
        : ROCConst_920::BiNegativeExponential;
    const ROCIndependentStats stats(space, assumption, largerTestMorePositive, usableLevel(confidenceLevel));

    auc_res res = missingArea();
    res.posCount = space.getPositiveCount();
    res.negCount = space.getNegtiveCount();
    res.area = stats.getArea();
    res.stdError = stats.getStdError();
    res.asymptoticSig = stats.getAsymptoticSignificant();
    std::tie(res.ciLower, res.ciUpper) = stats.getConfidenceInterval();
    return res;
}

} // namespace
} // namespace ROCALG_920::arraycalls

using namespace ROCALG_920;
using namespace ROCALG_920::arraycalls;

auc_res auc(const double* actual, const double* predicted, int n, const double* positiveValue, const char* include,
            const char* larger, const char* distribution, double confidenceLevel)
{
    return guarded(
        [&] {
            return area({actual, predicted, n, positiveValue}, include, larger, distribution, confidenceLevel);
        },
        missingArea());
}

auc_comparison_res auc_comparison(auc_res first, auc_res second, double confidenceLevel)
{
    const DefaultArithmetic arithmetic;
    auc_comparison_res res = missingComparison();
    res.first = first;
    res.second = second;
    res.stdErrorDiff = independentStdError(first.stdError, second.stdError);
    res.areaDiff = areaDifference(first.area, second.area);
    const DifferenceTest test =
        testDifference(res.areaDiff, res.stdErrorDiff, criticalValue(usableLevel(confidenceLevel)));
    res.z = test.z;
    res.zSig = test.significance;
    res.ciLower = test.lower;
    res.ciUpper = test.upper;
    return res;
}

auc_comparison_res auc_indpendentcomparison(const double* actual1, const double* predicted1, int size1,
                                            const double* actual2, const double* predicted2, int size2,
                                            const double* positiveValue, const char* include, const char* larger,
                                            const char* distribution, double confidenceLevel)
{
    return auc_comparison(
        auc(actual1, predicted1, size1, positiveValue, include, larger, distribution, confidenceLevel),
        auc(actual2, predicted2, size2, positiveValue, include, larger, distribution, confidenceLevel),
        confidenceLevel);
}
