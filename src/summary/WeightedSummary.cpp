#include "summary/WeightedSummary.h"

#include "numeric/DoubleDouble.h"
#include "numeric/ExactSum.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ROCALG_920 {

namespace {

/// Over the unit, which makes them 2 at most.
class Weights {
public:
    explicit Weights(std::span<const WeightedCase> cases)
    {
        const auto [least, most] = std::ranges::minmax(cases, {}, &WeightedCase::weight);
        equal_ = least.weight == most.weight; // exact
        exponent_ = std::ilogb(most.weight);
        unit_ = equal_ ? most.weight : std::ldexp(1.0, exponent_);
    }
    [[nodiscard]] bool equal() const noexcept { return equal_; }
    [[nodiscard]] double unit() const noexcept { return unit_; }
    [[nodiscard]] double of(const WeightedCase& one) const { return equal_ ? 1.0 : std::ldexp(one.weight, -exponent_); }

private:
    bool equal_;
    int exponent_;
    double unit_;
};

WeightSums sumsOf(std::span<const WeightedCase> cases, bool positive, const Weights& weights)
{
    ExactSum sum;
    ExactSum squares;
    for (const WeightedCase& one : cases) {
        if (one.positive != positive)
            continue;
        const double weight = weights.of(one);
        const DoubleDouble square = DoubleDouble::product(weight, weight);
        if (cases.size() == 1)
            return {weight, square.high()};
        sum.add(weight);
        squares.add(square.high());
        squares.add(square.low());
    }
    return {sum.value(), squares.value()};
}

} // namespace

StateWeights WeightedSummary::totals() const
{
    if (!isWeighted())
        return {static_cast<double>(counts.counts().positives), static_cast<double>(counts.counts().negatives)};
    ExactSum positives;
    ExactSum negatives;
    for (const ValueWeights& x : weights) {
        positives.add(x.positives.sum);
        negatives.add(x.negatives.sum);
    }
    return {positives.value(), negatives.value()};
}

WeightedSummary weightedSummary(std::span<WeightedCase> cases)
{
    WeightedSummary sample;
    if (cases.empty())
        return sample;
    std::ranges::sort(cases, {}, &WeightedCase::value);
    const Weights weights(cases);
    sample.unit = weights.unit();
    sample.equalWeights = weights.equal();
    std::vector<DistinctValue> values;
    for (std::size_t first = 0, end = 0; first < cases.size(); first = end) {
        DistinctValue x{.value = cases[first].value};
        for (; end < cases.size() && cases[end].value == x.value; ++end) // exact; both zeros are one value
            (cases[end].positive ? x.positives : x.negatives) += 1;
        const std::span<const WeightedCase> equal = cases.subspan(first, end - first);
        values.push_back(x);
        sample.weights.push_back({sumsOf(equal, true, weights), sumsOf(equal, false, weights)});
    }
    sample.counts = Summary(std::span<const DistinctValue>(values));
    return sample;
}

} // namespace ROCALG_920
