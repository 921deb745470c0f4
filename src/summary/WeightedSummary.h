#pragma once

#include "numeric/DoubleDouble.h"
#include "numeric/ExactSum.h"
#include "summary/Summary.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace ROCALG_920 {

/// A case that stands for as many of the population as its weight says: the inverse of its chance to be sampled.
struct WeightedCase {
    double value;
    double weight; ///< above 0, finite
    bool positive;
};

/// The probability weights of the cases of one state at one value.
struct WeightSums {
    double sum = 0.0;
    double squares = 0.0;
};

struct ValueWeights {
    WeightSums positives;
    WeightSums negatives;
};

/// A summary and, where cases have probability weights, their sums: 56 bytes a distinct value. The scale of weights
/// cannot matter, so they are kept over a power of two, which brings the largest into [1, 2).
struct WeightedSummary {
    Summary counts;
    std::vector<ValueWeights> weights; ///< parallel to the distinct values; empty: every case counts once
    int exponent = 0;                  ///< weights are 2^exponent as large as their sums say
    bool equalWeights = true;          ///< all of them: they say nothing then

    [[nodiscard]] bool isWeighted() const noexcept { return !weights.empty(); }
    /// As Summary::negated.
    [[nodiscard]] WeightedSummary negated() const
    {
        return {counts.negated(), {weights.rbegin(), weights.rend()}, exponent, equalWeights};
    }
};

/// Sum of the weights of a state; its number of cases without.
[[nodiscard]] inline double weightOf(const WeightedSummary& sample, bool positive)
{
    const StateCounts& cases = sample.counts.counts();
    if (!sample.isWeighted())
        return static_cast<double>(positive ? cases.positives : cases.negatives);
    ExactSum sum;
    for (const ValueWeights& x : sample.weights)
        sum.add((positive ? x.positives : x.negatives).sum);
    return std::ldexp(sum.value(), sample.exponent);
}

/// Of cases in any order, which are put into ascending order. The order changes no bit. Throws std::bad_alloc only.
[[nodiscard]] inline WeightedSummary weightedSummary(std::span<WeightedCase> cases)
{
    WeightedSummary sample;
    if (cases.empty())
        return sample;
    std::ranges::sort(cases, {}, &WeightedCase::value);
    const auto [least, most] = std::ranges::minmax(cases, {}, &WeightedCase::weight);
    sample.equalWeights = least.weight == most.weight; // exact
    sample.exponent = std::ilogb(most.weight);
    std::vector<DistinctValue> values;
    const auto sums = [&](std::span<const WeightedCase> equal, bool positive) {
        ExactSum sum;
        ExactSum squares;
        for (const WeightedCase& one : equal)
            if (one.positive == positive) {
                const double weight = std::ldexp(one.weight, -sample.exponent);
                const DoubleDouble square = DoubleDouble::product(weight, weight);
                sum.add(weight);
                squares.add(square.high());
                squares.add(square.low());
            }
        return WeightSums{sum.value(), squares.value()};
    };
    for (std::size_t first = 0, end = 0; first < cases.size(); first = end) {
        DistinctValue x{.value = cases[first].value};
        for (; end < cases.size() && cases[end].value == x.value; ++end) // exact; both zeros are one value
            (cases[end].positive ? x.positives : x.negatives) += 1;
        values.push_back(x);
        const std::span<const WeightedCase> equal = cases.subspan(first, end - first);
        sample.weights.push_back({sums(equal, true), sums(equal, false)});
    }
    sample.counts = Summary(std::span<const DistinctValue>(values));
    return sample;
}

} // namespace ROCALG_920
