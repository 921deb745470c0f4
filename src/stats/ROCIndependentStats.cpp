#include "stats/ROCIndependentStats.h"

#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "inference/TestAndInterval.h"
#include "numeric/Int128.h"
#include "inference/OrderedPairs.h"

#include <cmath>
#include <cstdint>
#include <tuple>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

namespace {

/// Exact sums over the distinct values x of the sample, with a and c the negatives and positives equal to x,
/// b the positives above it and d the negatives below it.
///
/// The sums are linear in a where c is 0, so the negatives between two values that hold positives count as one value;
/// above the last positive b is 0 as well, and nothing is left to add.
class PlacementSums {
public:
    explicit PlacementSums(std::int64_t nPos) : positivesAbove_(static_cast<std::uint64_t>(nPos)) {}

    void add(const DistinctValue& x)
    {
        if (x.positives == 0)
            pendingNegatives_ += static_cast<std::uint64_t>(x.negatives);
        else
            addWithPositives(static_cast<std::uint64_t>(x.negatives), static_cast<std::uint64_t>(x.positives));
    }

    [[nodiscard]] std::int64_t twiceS() const noexcept { return static_cast<std::int64_t>(twiceS_); }
    [[nodiscard]] Int128 threeTimesS1() const noexcept { return threeTimesS1_; }
    [[nodiscard]] Int128 threeTimesS2() const noexcept { return threeTimesS2_; }

private:
    /// Counts are below 2^31 in all, so each bracket, at most 3 * 2^62, fits into an unsigned 64-bit integer.
    void addWithPositives(std::uint64_t a, std::uint64_t c)
    {
        const std::uint64_t above = positivesAbove_;
        twiceS_ += pendingNegatives_ * 2 * above;
        threeTimesS1_ += Int128{pendingNegatives_} * (3 * above * above);
        negativesBelow_ += pendingNegatives_;
        pendingNegatives_ = 0;

        const std::uint64_t b = positivesAbove_ -= c;
        const std::uint64_t d = negativesBelow_;
        twiceS_ += a * (c + 2 * b);
        threeTimesS1_ += Int128{a} * (c * c + 3 * b * (c + b));
        threeTimesS2_ += Int128{c} * (a * a + 3 * d * (a + d));
        negativesBelow_ += a;
    }

    std::uint64_t twiceS_ = 0; ///< sum of a * (c + 2b)
    Int128 threeTimesS1_ = 0;  ///< sum of a * (c^2 + 3bc + 3b^2)
    Int128 threeTimesS2_ = 0;  ///< sum of c * (a^2 + 3ad + 3d^2)
    std::uint64_t positivesAbove_;
    std::uint64_t negativesBelow_ = 0;   ///< up to the last value that held positives
    std::uint64_t pendingNegatives_ = 0; ///< after it
};

/// The two excess moments of the area: what the variance adds for every further case of a state.
struct Moments {
    double q1Excess; ///< Q1 - A^2, two positives against one negative
    double q2Excess; ///< Q2 - A^2, one positive against two negatives
};

/// Q1 = S1 / (nNeg nPos^2) and Q2 = S2 / (nNeg^2 nPos), their excess over A^2 formed before anything is rounded.
Moments nonparametricMoments(const PlacementSums& sums, std::int64_t nPos, std::int64_t nNeg)
{
    const double pairs = static_cast<double>(nPos) * static_cast<double>(nNeg);
    const Int128 threeSquares = Int128{3} * sums.twiceS() * sums.twiceS();
    const auto excess = [&](Int128 threeTimesSum, std::int64_t count) {
        return static_cast<double>(4 * count * threeTimesSum - threeSquares) / (12.0 * pairs * pairs);
    };
    return {excess(sums.threeTimesS1(), nNeg), excess(sums.threeTimesS2(), nPos)};
}

/// Q1 = A / (2 - A) and Q2 = 2 A^2 / (1 + A), their excess over A^2 as products of A and its rest 1 - A.
Moments biNegativeExponentialMoments(double area, double rest)
{
    return {area * (rest * rest) / (2 - area), area * area * rest / (1 + area)};
}

} // namespace

ROCIndependentStats::ROCIndependentStats(ROCSpace& space, ROCConst_920::Distribution distribution,
                                         bool largerTestMorePositive, double confidenceLevel)
    : space_(space), area_(VexMV::Missing()), stdError_(VexMV::Missing()), giniIndex_(VexMV::Missing()),
      asymptoticSig_(VexMV::Missing()), confidenceLevel_(confidenceLevel), zCritical_(criticalValue(confidenceLevel)),
      distribution_(distribution), largerTestMorePositive_(largerTestMorePositive), ciLower_(VexMV::Missing()),
      ciUpper_(VexMV::Missing())
{
    space_.finish();
    if (space_.hasBothStates())
        computeStats();
}

bool ROCIndependentStats::computeStats()
{
    const std::int64_t nPos = space_.getPositiveCount();
    const std::int64_t nNeg = space_.getNegtiveCount();
    PlacementSums sums(nPos);
    space_.forEachDistinctValue([&](const DistinctValue& x) { sums.add(x); });
    space_.orderByState();

    // The moments and the standard error belong to the share of pairs in ascending order, whatever the direction.
    const OrderedPairs pairs{sums.twiceS(), 2 * nPos * nNeg};
    const double share = pairs.share();
    const double rest = pairs.restShare();
    const auto [q1Excess, q2Excess] = distribution_ == ROCConst_920::NonParametric
        ? nonparametricMoments(sums, nPos, nNeg)
        : biNegativeExponentialMoments(share, rest);
    const double ofPositives = q1Excess * static_cast<double>(nPos - 1) + rest * share;
    stdError_ = std::sqrt((q2Excess * static_cast<double>(nNeg - 1) + ofPositives) / static_cast<double>(nNeg * nPos));

    area_ = pairs.area(largerTestMorePositive_);
    giniIndex_ = area_ + area_ - 1;
    asymptoticSig_ = twoSidedSignificance((area_ - nullArea) / stdError_);
    std::tie(ciLower_, ciUpper_) = confidenceInterval(area_, stdError_, zCritical_);
    return true;
}

int ROCIndependentStats::getTestVarInd() const { return space_.getTestVar(); }

} // namespace ROCALG_920
