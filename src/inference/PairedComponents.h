#pragma once

#include "inference/PlacementSums.h"
#include "summary/Observations.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ROCALG_920 {

/// The placements of one test variable case by case, in the order of arrival.
class PairedComponents {
public:
    /// Up to so many cases twice a count, 2 P or 2 N at most, fits into 32 bits; beyond, cases take 64 bits each.
    static constexpr std::int64_t mostNarrow = std::int64_t{1} << 31;

    /// One sort. Without a case of each state there are no components. Throws std::bad_alloc only.
    explicit PairedComponents(const Observations& observations, std::int64_t mostNarrowCases = mostNarrow);

    /// Number of cases with a component.
    [[nodiscard]] std::size_t size() const noexcept { return narrow_.size() + wide_.size(); }
    /// Twice the count behind the component of the case that arrived at this position.
    [[nodiscard]] std::int64_t twice(std::size_t position) const noexcept
    {
        return wide_.empty() ? narrow_[position] : wide_[position];
    }
    /// Twice the count behind a component of a case in this state.
    [[nodiscard]] std::int64_t twiceOf(double component, bool positive) const noexcept
    {
        const StateCounts& cases = placements_.cases();
        // A whole number but for the rounding of the component.
        return std::llround(component * 2.0 * static_cast<double>(positive ? cases.negatives : cases.positives));
    }
    [[nodiscard]] const PlacementSums& placements() const noexcept { return placements_; }

    /// Products of the twice counts of two variables, summed over the same cases, which are in the order of arrival.
    [[nodiscard]] static StateSums products(const Observations& cases, const PairedComponents& first,
                                            const PairedComponents& second);

private:
    template <class Twice>
    void rank(const Observations& observations, std::vector<Twice>& twice);

    PlacementSums placements_;
    std::vector<std::uint32_t> narrow_;
    std::vector<std::int64_t> wide_; ///< in place of narrow_
};

} // namespace ROCALG_920
