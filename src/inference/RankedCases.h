#pragma once

#include "inference/PlacementSums.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace ROCALG_920 {

/// One test variable in a list of rows by the rank of its values: ordered once, it can be compared on any part of them.
class RankedCases {
public:
    static constexpr std::uint32_t unknown = std::numeric_limits<std::uint32_t>::max(); ///< rank of a missing value

    /// One sort. NaN is missing; of larger false, the largest value comes first. At most 2^31 rows. Throws
    /// std::bad_alloc only.
    RankedCases(std::span<const double> values, bool larger);

    [[nodiscard]] std::size_t rows() const noexcept { return ranks_.size(); }
    [[nodiscard]] std::uint32_t rank(std::size_t row) const noexcept { return ranks_[row]; }
    [[nodiscard]] std::size_t distinct() const noexcept { return distinct_; }

private:
    std::vector<std::uint32_t> ranks_; ///< from 0, most negative first
    std::size_t distinct_ = 0;
};

/// Two tests on the rows in which both are known, larger ranks being more positive.
struct RankedPair {
    PlacementSums first;
    PlacementSums second;
    PairedDifference difference;
};
/// states: 1 for the rows of positive cases, 0 for others; as many as both tests have. No sort: one count by rank, and
/// one pass for the products. Missing where a state has no case.
[[nodiscard]] RankedPair compareRanked(std::span<const unsigned char> states, const RankedCases& first,
                                       const RankedCases& second);

} // namespace ROCALG_920
