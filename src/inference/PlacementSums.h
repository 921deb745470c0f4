#pragma once

#include "inference/OrderedPairs.h"
#include "inference/OrderedTriples.h"
#include "numeric/Int128.h"
#include "summary/ValueWalk.h"

#include <cstdint>

namespace ROCALG_920 {

/// One exact sum over the positive and one over the negative cases.
template <class Sum>
struct SumsByState {
    Sum positives = 0;
    Sum negatives = 0;
};

/// Sums of products of placements; below 4 P N^2 they fit into 128 bits up to 2^40 cases.
struct StateSums : SumsByState<Int128> {
    void add(bool positive, Int128 term) noexcept
    {
        positives += positive ? term : 0;
        negatives += positive ? 0 : term;
    }
};

/// The structural components (placement values) of one test variable, summed over its distinct values.
///
/// A positive case's component is the share of negatives below its value, a negative case's the share of positives
/// above it, ties counting one half. Twice the count behind a share is an integer, and so is every sum over them:
/// nothing is rounded before the last division, so nothing cancels.
/// Source: DeLong, DeLong and Clarke-Pearson (1988), Comparing the areas under two or more correlated receiver
/// operating characteristic curves, Biometrics 44, 837-845.
class PlacementSums {
public:
    /// Twice the counts behind the components of the cases that share a test value.
    struct Twice {
        std::int64_t ofPositive;
        std::int64_t ofNegative;
    };

    /// Before the first value of a sample of up to 2^40 cases in these states.
    explicit PlacementSums(const StateCounts& cases) : cases_(cases) {}

    /// Takes the next value in ascending order.
    Twice add(const DistinctValue& x) noexcept
    {
        const std::int64_t twiceBelow = 2 * seen_.negatives + x.negatives;
        const std::int64_t twiceAbove = 2 * (cases_.positives - seen_.positives) - x.positives;
        seen_.add(x);
        twiceOrdered_ += Int128{x.positives} * twiceBelow;
        squares_.positives += Int128{x.positives} * twiceBelow * twiceBelow;
        squares_.negatives += Int128{x.negatives} * twiceAbove * twiceAbove;
        if (x.positives + x.negatives > 1) [[unlikely]]
            ties_.add<Int128>(x.negatives, x.positives);
        return {twiceBelow, twiceAbove};
    }

    [[nodiscard]] const StateCounts& cases() const noexcept { return cases_; }
    [[nodiscard]] OrderedPairs pairs() const noexcept
    {
        return {twiceOrdered_, Int128{2} * cases_.positives * cases_.negatives};
    }
    /// Products of the twice counts with themselves, over the cases of each state.
    [[nodiscard]] const StateSums& squares() const noexcept { return squares_; }
    /// The same sums as triples, for the standard errors that are made of those.
    [[nodiscard]] OrderedTriples triples() const noexcept;
    /// Variance of the area; not a number when a state has a single case.
    [[nodiscard]] double variance() const noexcept;

private:
    StateCounts cases_;
    StateCounts seen_;
    Int128 twiceOrdered_ = 0;
    StateSums squares_;
    TieSums ties_;
};

/// The same variance of a sample that was walked over for its triples, as what either state adds to it; both occur.
[[nodiscard]] SumsByState<double> deLongTerms(const OrderedTriples& sample) noexcept;
[[nodiscard]] inline double deLongVariance(const OrderedTriples& sample) noexcept
{
    const SumsByState<double> terms = deLongTerms(sample);
    return terms.positives + terms.negatives;
}

/// The placements of a whole sample in these states.
template <ValueWalk Walk>
[[nodiscard]] PlacementSums placementSums(const Walk& walk, const StateCounts& cases)
{
    PlacementSums placements(cases);
    forEachValue(walk, [&](const DistinctValue& x) { placements.add(x); });
    return placements;
}

/// What the areas of two variables measured on the same cases say about their difference.
struct PairedDifference {
    double covariance;
    double stdErrorDiff; ///< formed from the integers: exactly 0 for a variable against itself
};
/// From both placements and the products of their twice counts, case by case. Not a number when a state has a single
/// case.
[[nodiscard]] PairedDifference pairedDifference(const PlacementSums& first, const PlacementSums& second,
                                                const StateSums& products);

} // namespace ROCALG_920
