#pragma once

#include "inference/Bootstrap.h"
#include "summary/ValueWalk.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

/// Intervals from replicates of statistics that are real numbers. Those of an area, which are integers, have theirs in
/// Bootstrap.h.
namespace ROCALG_920 {

/// The replicate at a share of the sorted ones: number floor((B + 1) p + 1/2), held in 1..B.
template <class Number>
class OrderStatistics {
public:
    explicit OrderStatistics(std::span<const Number> sorted) : sorted_(sorted) {}
    [[nodiscard]] Number at(double p)
    {
        const auto count = static_cast<double>(sorted_.size());
        const double number = std::floor((count + 1.0) * p + 0.5);
        const double held = std::clamp(number, 1.0, count);
        heldAtEnd_ = heldAtEnd_ || held != number;
        return sorted_[static_cast<std::size_t>(held) - 1];
    }
    [[nodiscard]] bool heldAtEnd() const noexcept { return heldAtEnd_; }

private:
    std::span<const Number> sorted_;
    bool heldAtEnd_ = false;
};

/// Standard error and percentile limits of replicates, which are sorted.
[[nodiscard]] BootstrapInterval percentilesOf(std::span<double> replicates, double level);

/// The same with limits corrected for bias and acceleration. Replicates that miss the estimate by rounding alone are
/// equal to it.
[[nodiscard]] BootstrapInterval correctedPercentilesOf(std::span<double> replicates, double estimate,
                                                       double acceleration, double level);

/// (sum v^3/P^3 + sum w^3/N^3) / (6 (sum v^2/P^2 + sum w^2/N^2)^1.5) over all cases, v and w the distances of their
/// influences from the mean of their state. Not a number without any influence.
///
/// @param ofPositive, ofNegative  of a case at every one of the values
[[nodiscard]] double accelerationOf(std::span<const DistinctValue> values, std::span<const double> ofPositive,
                                    std::span<const double> ofNegative);

} // namespace ROCALG_920
