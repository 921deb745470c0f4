#pragma once

#include "inference/OrderedPairs.h"
#include "numeric/Int128.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ROCALG_920 {

class ROCSpace;

/// One exact sum over the positive and one over the negative cases.
struct StateSums {
    Int128 positives = 0;
    Int128 negatives = 0;

    void add(bool positive, Int128 term) noexcept
    {
        positives += positive ? term : 0;
        negatives += positive ? 0 : term;
    }
};

/// The structural components (placement values) of one test variable, by case in the order of arrival.
///
/// A positive case's component is the share of negatives below its value, a negative case's the share of positives
/// above it, ties counting one half. Twice the count behind a share is an integer, and so is every sum over them:
/// nothing is rounded before the last division, so nothing cancels.
/// Source: DeLong, DeLong and Clarke-Pearson (1988), Comparing the areas under two or more correlated receiver
/// operating characteristic curves, Biometrics 44, 837-845.
class PairedComponents {
public:
    /// One sort. Without a case of each state there are no components. Throws std::bad_alloc only.
    explicit PairedComponents(const ROCSpace& space);

    /// Number of cases with a component.
    [[nodiscard]] std::size_t size() const noexcept { return twice_.size(); }
    /// Twice the count behind the component of the case that arrived at this position.
    [[nodiscard]] std::uint32_t twice(std::size_t position) const noexcept { return twice_[position]; }
    /// Twice the count behind a component of a case in this state.
    [[nodiscard]] std::int64_t twiceOf(double component, bool positive) const noexcept
    {
        // A whole number but for the rounding of the component.
        return std::llround(component * 2.0 * static_cast<double>(positive ? nNeg_ : nPos_));
    }
    [[nodiscard]] OrderedPairs pairs() const noexcept { return pairs_; }
    /// Products of `twice` with itself, summed by state.
    [[nodiscard]] const StateSums& squares() const noexcept { return squares_; }

    /// Sums around the means of two variables measured on the same cases, times positives and times negatives, from
    /// the products of their `twice` summed by state.
    [[nodiscard]] StateSums centred(const StateSums& products, const PairedComponents& other) const noexcept;
    /// The covariance (variance) of areas that such sums stand for: over the cases of each state, the mean product
    /// divided by its degrees of freedom. Not a number when a state has a single case.
    [[nodiscard]] double covarianceOf(const StateSums& centredSums) const noexcept;

private:
    std::int64_t nPos_;
    std::int64_t nNeg_;
    std::vector<std::uint32_t> twice_;
    OrderedPairs pairs_;
    StateSums squares_;
};

} // namespace ROCALG_920
