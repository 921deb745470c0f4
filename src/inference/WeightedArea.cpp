#include "inference/WeightedArea.h"

#include "host/VexMV.h"
#include "numeric/DoubleDouble.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace ROCALG_920 {

namespace {

/// The weights of both states: all of them, or those up to a value.
struct WeightTotals {
    DoubleDouble positives = 0.0;
    DoubleDouble negatives = 0.0;

    void add(const ValueWeights& x)
    {
        positives = positives + x.positives.sum;
        negatives = negatives + x.negatives.sum;
    }
};

/// Calls visit(value, share of negatives below it, share of positives above it), ties counting half.
template <class Visit>
void forEachPlacement(const std::vector<ValueWeights>& weights, const WeightTotals& all, Visit&& visit)
{
    WeightTotals seen;
    for (const ValueWeights& x : weights) {
        const DoubleDouble below = seen.negatives + DoubleDouble(0.5 * x.negatives.sum);
        seen.add(x);
        const DoubleDouble above = all.positives - seen.positives + DoubleDouble(0.5 * x.positives.sum);
        visit(x, below / all.negatives, above / all.positives);
    }
}

/// count / (count - 1) of the sum over the squared weight of the state; not a number for a single case.
double varianceTerm(DoubleDouble sum, DoubleDouble weight, std::int64_t count)
{
    if (count < 2)
        return std::nan("");
    const auto cases = static_cast<double>(count);
    return static_cast<double>(sum / (weight * weight) * cases / (cases - 1.0));
}

} // namespace

AreaFacts weightedAreaFacts(const WeightedSummary& sample)
{
    const StateCounts& cases = sample.counts.counts();
    if (!cases.bothStates() || sample.equalWeights) {
        AreaFacts facts = areaFacts(orderedTriples(sample.counts.walk(), cases), ROCConst_920::NonParametric, true);
        facts.weighted = true;
        return facts;
    }
    WeightTotals all;
    for (const ValueWeights& x : sample.weights)
        all.add(x);
    DoubleDouble ordered = 0.0;
    forEachPlacement(sample.weights, all, [&](const ValueWeights& x, DoubleDouble v, DoubleDouble) {
        ordered = ordered + v * x.positives.sum;
    });
    const DoubleDouble area = ordered / all.positives;
    DoubleDouble ofPositives = 0.0;
    DoubleDouble ofNegatives = 0.0;
    forEachPlacement(sample.weights, all, [&](const ValueWeights& x, DoubleDouble v, DoubleDouble w) {
        ofPositives = ofPositives + (v - area) * (v - area) * x.positives.squares;
        ofNegatives = ofNegatives + (w - area) * (w - area) * x.negatives.squares;
    });
    return {.cases = cases,
            .area = static_cast<double>(area),
            .waldError = VexCommon_920::VexMV::Missing(),
            .var = {varianceTerm(ofPositives, all.positives, cases.positives),
                    varianceTerm(ofNegatives, all.negatives, cases.negatives)},
            .weighted = true};
}

} // namespace ROCALG_920
