#pragma once

#include "inference/OrderedPairs.h"
#include "numeric/Int128.h"
#include "summary/ValueWalk.h"
#include "vexrocproc/ROCConst.h"

#include <cstdint>

namespace ROCALG_920 {

/// Sums over the values that several cases share, with a negatives and c positives: exact up to 2^40 cases.
struct TieSums {
    Int128 ofPositives = 0; ///< sum of c * a^2
    Int128 ofNegatives = 0; ///< sum of a * c^2
    Int128 cubes = 0;       ///< sum of t^3 - t for the a + c = t cases at a value, of one state or of both

    template <class Count>
    void add(Count a, Count c) noexcept
    {
        ofPositives += static_cast<Int128>(c * a) * static_cast<Int128>(a);
        ofNegatives += static_cast<Int128>(c * a) * static_cast<Int128>(c);
        const Count t = a + c;
        cubes += static_cast<Int128>(t * (t - 1)) * static_cast<Int128>(t + 1);
    }
};

/// How the pairs and triples of cases are ordered, and which are tied: all that an area, its standard errors and its
/// rank sum test ask of a sample.
struct OrderedTriples {
    StateCounts cases;
    OrderedPairs pairs;
    Int128 threeTimesS1; ///< sum of a * (c^2 + 3bc + 3b^2): two positives against one negative
    Int128 threeTimesS2; ///< sum of c * (a^2 + 3ad + 3d^2): one positive against two negatives
    TieSums tieSums = {};

    /// Some value occurs with both states.
    [[nodiscard]] bool ties() const noexcept { return tieSums.ofPositives > 0; }
};

/// Exact sums over the distinct values x of the sample, with a and c the negatives and positives equal to x,
/// b the positives above it and d the negatives below it.
///
/// The sums are linear in a where c is 0, so the negatives between two values that hold positives count as one value;
/// above the last positive b is 0 as well, and nothing is left to add. Count is unsigned and wide enough for each
/// bracket, 3 P^2 or 3 N^2 at most, and for 2 P N.
/// Source: Hanley and McNeil (1982), The meaning and use of the area under a receiver operating characteristic (ROC)
/// curve, Radiology 143, 29-36.
template <class Count>
class TripleSweep {
public:
    explicit TripleSweep(const StateCounts& cases) : positivesAbove_(static_cast<Count>(cases.positives)) {}

    void add(const DistinctValue& x)
    {
        if (x.positives + x.negatives > 1) [[unlikely]]
            ties_.add(static_cast<Count>(x.negatives), static_cast<Count>(x.positives));
        if (x.positives == 0)
            pendingNegatives_ += static_cast<Count>(x.negatives);
        else
            addWithPositives(static_cast<Count>(x.negatives), static_cast<Count>(x.positives));
    }
    [[nodiscard]] OrderedTriples totals(const StateCounts& cases) const noexcept
    {
        const OrderedPairs pairs{static_cast<Int128>(twiceS_), Int128{2} * cases.positives * cases.negatives};
        return {cases, pairs, threeTimesS1_, threeTimesS2_, ties_};
    }

private:
    void addWithPositives(Count a, Count c)
    {
        const Count above = positivesAbove_;
        twiceS_ += pendingNegatives_ * 2 * above;
        threeTimesS1_ += static_cast<Int128>(pendingNegatives_) * static_cast<Int128>(3 * above * above);
        negativesBelow_ += pendingNegatives_;
        pendingNegatives_ = 0;

        const Count b = positivesAbove_ -= c;
        const Count d = negativesBelow_;
        twiceS_ += a * (c + 2 * b);
        threeTimesS1_ += static_cast<Int128>(a) * static_cast<Int128>(c * c + 3 * b * (c + b));
        threeTimesS2_ += static_cast<Int128>(c) * static_cast<Int128>(a * a + 3 * d * (a + d));
        negativesBelow_ += a;
    }

    Count twiceS_ = 0; ///< sum of a * (c + 2b)
    Int128 threeTimesS1_ = 0;
    Int128 threeTimesS2_ = 0;
    TieSums ties_;
    Count positivesAbove_;
    Count negativesBelow_ = 0;   ///< up to the last value that held positives
    Count pendingNegatives_ = 0; ///< after it
};

/// The sums of a whole sample of up to 2^40 cases in these states: below 3 N P^2 < 2^121 they fit into 128 bits.
template <ValueWalk Walk>
[[nodiscard]] OrderedTriples orderedTriples(const Walk& walk, const StateCounts& cases)
{
    __extension__ typedef unsigned __int128 Wide;
    const auto sweep = [&](auto sums) {
        forEachValue(walk, [&](const DistinctValue& x) { sums.add(x); });
        return sums.totals(cases);
    };
    // Up to 2^31 cases each bracket, at most 3 * 2^62, fits into 64 bits, which cost half the time.
    constexpr std::int64_t mostNarrow = std::int64_t{1} << 31;
    return cases.cases() <= mostNarrow ? sweep(TripleSweep<std::uint64_t>(cases)) : sweep(TripleSweep<Wide>(cases));
}

/// Standard error of the area: it belongs to the share of pairs in ascending order, whatever the direction. Nothing is
/// rounded before the excess of the moments over the squared area is formed, in 256 bits. Both states occur.
[[nodiscard]] double stdErrorOfArea(const OrderedTriples& sample, ROCConst_920::Distribution distribution);

} // namespace ROCALG_920
