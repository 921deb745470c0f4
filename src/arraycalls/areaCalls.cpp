#include "arraycalls/arrayInput.h"
#include "arraycalls/results.h"
#include "inference/OrderedTriples.h"
#include "summary/SortedObservations.h"
#include "vexrocproc/optionwords.h"

namespace ROCALG_920::arraycalls {
namespace {

auc_res area(const ArrayInput& input, const char* larger, const char* distribution, double confidenceLevel)
{
    const Observations observations = observationsOf(input);
    const StateCounts& cases = observations.counts();
    if (!cases.bothStates())
        return areaRecord(cases, AreaTest());
    const ROCConst_920::Distribution assumption = isNonParamDist(distribution) || cases.positives != cases.negatives
        ? ROCConst_920::NonParametric
        : ROCConst_920::BiNegativeExponential;
    const OrderedTriples triples =
        withWalk(observations, [&](const auto& walk) { return orderedTriples(walk, cases); });
    return areaRecord(cases,
                      testArea(triples.pairs.area(isLarger(larger)), stdErrorOfArea(triples, assumption),
                               criticalValue(usableLevel(confidenceLevel))));
}

} // namespace
} // namespace ROCALG_920::arraycalls

using namespace ROCALG_920;
using namespace ROCALG_920::arraycalls;

// A cut-off has no part in an area, so that `include` changes nothing.
auc_res auc(const double* actual, const double* predicted, int n, const double* positiveValue, const char* /*include*/,
            const char* larger, const char* distribution, double confidenceLevel)
{
    return guarded(
        [&] {
            return area({actual, predicted, n, positiveValue}, larger, distribution, confidenceLevel);
        },
        missingArea());
}

auc_comparison_res auc_comparison(auc_res first, auc_res second, double confidenceLevel)
{
    const DefaultArithmetic arithmetic;
    return comparisonRecord(first, second, independentStdError(first.stdError, second.stdError),
                            criticalValue(usableLevel(confidenceLevel)));
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
