#include "inference/WeightedCurve.h"

#include "host/VexMV.h"
#include "inference/CutOffWeights.h"

#include <cstddef>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

namespace {

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
    const WeightsBySide weights(sample, options.largerTestMorePositive);
    const std::size_t allNegative = options.largerTestMorePositive ? values.size() : 0;
    WeightedCurve curve;
    std::size_t place = 0;
    for (const double cutOff : cutOffs) {
        while (place < values.size() && side.isLeft(values[place].value, cutOff))
            ++place;
        const auto [tp, fp, tn, fn] = weights.at(place);
        curve.sensSpec.emplace_back(tp / (tp + fn), tn / (tn + fp));
        curve.precisionRecall.emplace_back(place == allNegative ? VexMV::Missing() : tp / (tp + fp),
                                           curve.sensSpec.back().first);
    }
    lendPrecision(curve.precisionRecall, options.largerTestMorePositive);
    return curve;
}

} // namespace ROCALG_920
