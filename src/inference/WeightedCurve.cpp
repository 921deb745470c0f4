#include "inference/WeightedCurve.h"

#include "host/VexMV.h"
#include "numeric/DoubleDouble.h"

#include <cstddef>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

namespace {

/// Weights of either state.
struct SideWeights {
    DoubleDouble positives = 0.0;
    DoubleDouble negatives = 0.0;

    /// Those of the distinct value number i. Equal weights are as good as counts, which lose nothing in their sums.
    void add(const WeightedSummary& sample, std::size_t i)
    {
        const DistinctValue& x = sample.counts.values()[i];
        const bool areCounts = sample.equalWeights;
        positives = positives + (areCounts ? static_cast<double>(x.positives) : sample.weights[i].positives.sum);
        negatives = negatives + (areCounts ? static_cast<double>(x.negatives) : sample.weights[i].negatives.sum);
    }
    [[nodiscard]] SideWeights restOf(const SideWeights& all) const
    {
        return {all.positives - positives, all.negatives - negatives};
    }
};

double share(DoubleDouble part, DoubleDouble whole) { return static_cast<double>(part / whole); }

/// At the end where nothing is positive there is no precision: the point takes that of its neighbour.
void lendPrecision(std::vector<std::pair<double, double>>& points, bool atEnd)
{
    if (points.size() < 2)
        return;
    double& precision = atEnd ? points.back().first : points.front().first;
    if (VexMV::IsMissing(precision))
        precision = points[atEnd ? points.size() - 2 : 1].first;
}

} // namespace

WeightedCurve weightedCurve(const WeightedSummary& sample, std::span<const double> cutOffs, CurveOptions options)
{
    const std::span<const DistinctValue> values = sample.counts.values();
    const SideOfCutOff side(sample.counts.counts(), options);
    SideWeights all;
    for (std::size_t i = 0; i < values.size(); ++i)
        all.add(sample, i);
    WeightedCurve curve;
    SideWeights left;
    std::size_t next = 0;
    for (const double cutOff : cutOffs) {
        for (; next < values.size() && side.isLeft(values[next].value, cutOff); ++next)
            left.add(sample, next);
        const SideWeights right = left.restOf(all);
        const auto& [truePositive, falsePositive] = options.largerTestMorePositive ? right : left;
        const DoubleDouble trueNegative = options.largerTestMorePositive ? left.negatives : right.negatives;
        const bool nonePositive = next == (options.largerTestMorePositive ? values.size() : 0);
        curve.sensSpec.emplace_back(share(truePositive, all.positives), share(trueNegative, all.negatives));
        curve.precisionRecall.emplace_back(nonePositive ? VexMV::Missing()
                                                        : share(truePositive, truePositive + falsePositive),
                                           curve.sensSpec.back().first);
    }
    lendPrecision(curve.precisionRecall, options.largerTestMorePositive);
    return curve;
}

} // namespace ROCALG_920
