#pragma once

#include "numeric/Int128.h"

namespace ROCALG_920 {

/// The pairs of one positive and one negative case, and how many of them are in ascending order.
struct OrderedPairs {
    Int128 twiceOrdered; ///< 2 for a pair whose positive has the larger value, 1 for a tie
    Int128 twicePairs;   ///< 2 * positives * negatives

    /// Share of the pairs whose positive has the larger value, ties counting half: the Mann-Whitney form of the area.
    [[nodiscard]] double share() const noexcept { return share(twiceOrdered); }
    /// 1 - share(), from the counts: near 1 the difference of the rounded share would lose its digits.
    [[nodiscard]] double restShare() const noexcept { return share(twicePairs - twiceOrdered); }
    /// The area for a direction.
    [[nodiscard]] double area(bool largerTestMorePositive) const noexcept
    {
        return largerTestMorePositive ? share() : restShare();
    }

private:
    [[nodiscard]] double share(Int128 twice) const noexcept
    {
        return static_cast<double>(twice) / static_cast<double>(twicePairs);
    }
};

} // namespace ROCALG_920
