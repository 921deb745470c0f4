#include "inference/RateAt.h"

#include "host/VexMV.h"
#include "inference/PartialArea.h"
#include "inference/Replicates.h"
#include "numeric/Int256.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ROCALG_920 {

namespace {

/// sqrt((B sum v^2 - (sum v)^2) / (B (B - 1))), and the mean, from the integers
struct IntegerMoments {
    double mean;
    double standardDeviation;
};

IntegerMoments momentsOf(std::span<const std::int64_t> numbers)
{
    Int128 sum = 0;
    Int256 squares = 0;
    for (const std::int64_t x : numbers) {
        sum += x;
        squares = squares + Int256(Int128{x} * x);
    }
    const auto count = static_cast<std::int64_t>(numbers.size());
    const Int256 centred = Int256(Int128{count}) * squares - Int256(sum) * Int256(sum);
    return {static_cast<double>(sum) / static_cast<double>(count),
            std::sqrt(static_cast<double>(centred) / static_cast<double>(Int128{count} * (count - 1)))};
}

} // namespace

RateAt::RateAt(CutOffCriterion::Kind kind, double share, const StateCounts& cases)
    : ofSensitivity_(kind == CutOffCriterion::Kind::specificity),
      all_(ofSensitivity_ ? cases.positives : cases.negatives)
{
    const std::int64_t others = ofSensitivity_ ? cases.negatives : cases.positives;
    allowed_ = static_cast<double>(others) - casesOfShare(share, others);
}

RateAt::Reach RateAt::reach(std::span<const DistinctValue> values) const
{
    Reach reach;
    std::int64_t wrong = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const DistinctValue& x = values[ofSensitivity_ ? values.size() - 1 - i : i];
        const std::int64_t gain = ofSensitivity_ ? x.positives : x.negatives;
        const std::int64_t loss = ofSensitivity_ ? x.negatives : x.positives;
        if (static_cast<double>(wrong + loss) > allowed_) {
            reach.part =
                (allowed_ - static_cast<double>(wrong)) / static_cast<double>(loss) * static_cast<double>(gain);
            break;
        }
        wrong += loss;
        reach.gained += gain;
    }
    return reach;
}

std::int64_t RateAt::reached(std::span<const DistinctValue> values) const { return reach(values).gained; }

double RateAt::interpolated(std::span<const DistinctValue> values) const
{
    const Reach found = reach(values);
    return (static_cast<double>(found.gained) + found.part) / static_cast<double>(all_);
}

RateInterval rateIntervalOfMoments(std::span<const std::int64_t> reached, std::int64_t all, double zCritical)
{
    const double square = zCritical * zCritical;
    const double scale = static_cast<double>(all) + square;
    const auto [mean, deviation] = momentsOf(reached);
    const double middle = (mean + square / 2.0) / scale;
    const double half = zCritical * (deviation / scale);
    if (deviation == 0.0) // exact; all replicates alike say nothing beyond these cases
        return {0.0, {VexCommon_920::VexMV::Missing(), VexCommon_920::VexMV::Missing()}};
    return {deviation / scale, {std::max(middle - half, 0.0), std::min(middle + half, 1.0)}};
}

RateInterval rateIntervalOfPercentiles(std::span<std::int64_t> reached, std::int64_t all, double level)
{
    std::ranges::sort(reached);
    OrderStatistics<std::int64_t> order(reached);
    const auto rate = [&](double p) { return static_cast<double>(order.at(p)) / static_cast<double>(all); };
    const Limits limits{rate((1.0 - level) / 2.0), rate((1.0 + level) / 2.0)};
    return {momentsOf(reached).standardDeviation / static_cast<double>(all), limits};
}

} // namespace ROCALG_920
