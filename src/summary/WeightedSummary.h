#pragma once

#include "summary/Summary.h"

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

/// The cases of both states, by number or by weight.
struct StateWeights {
    double positives;
    double negatives;
};

/// A summary and, where cases have probability weights, their sums: 56 bytes a distinct value. The scale of weights
/// cannot matter, so sums are kept over a unit: a power of two, which brings the largest weight into [1, 2), or the
/// weight that all cases share. Then they are the numbers of cases.
struct WeightedSummary {
    Summary counts;
    std::vector<ValueWeights> weights; ///< parallel to the distinct values; empty: every case counts once
    double unit = 1.0;                 ///< weights are so many times as large as their sums say
    bool equalWeights = true;          ///< all of them: they say nothing then

    [[nodiscard]] bool isWeighted() const noexcept { return !weights.empty(); }
    /// All cases: their weights over the unit, or their numbers.
    [[nodiscard]] StateWeights totals() const;
    /// The same on the scale that the weights came on.
    [[nodiscard]] StateWeights weightsAsGiven() const
    {
        const auto [positives, negatives] = totals();
        return {positives * unit, negatives * unit};
    }
    /// By weight or by number. There is a case.
    [[nodiscard]] double shareOfPositives() const
    {
        const auto [positives, negatives] = totals();
        return positives / (positives + negatives);
    }
    /// As Summary::negated.
    [[nodiscard]] WeightedSummary negated() const
    {
        return {counts.negated(), {weights.rbegin(), weights.rend()}, unit, equalWeights};
    }
};

/// Of cases in any order, which are put into ascending order. The order changes no bit. Throws std::bad_alloc only.
[[nodiscard]] WeightedSummary weightedSummary(std::span<WeightedCase> cases);

} // namespace ROCALG_920
