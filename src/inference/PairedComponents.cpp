#include "inference/PairedComponents.h"

#include "space/ROCSpace.h"

namespace ROCALG_920 {

namespace {

/// Twice the counts behind the components of the cases that share a test value.
struct TwiceCounts {
    std::uint32_t ofPositive = 0;
    std::uint32_t ofNegative = 0;
};

/// Sum over the cases of one state of (v - mean)(w - mean) / (count - 1) / count, where the components v and w are
/// halves of integers over the number of the other state's cases.
double meanProduct(Int128 centredTimesCount, double count, double others)
{
    const double sum = static_cast<double>(centredTimesCount) / (4.0 * others * others * count);
    return sum / (count - 1) / count;
}

} // namespace

PairedComponents::PairedComponents(const ROCSpace& space)
    : nPos_(space.getPositiveCount()), nNeg_(space.getNegtiveCount())
{
    if (nPos_ == 0 || nNeg_ == 0)
        return;
    twice_.resize(space.observations().size());
    std::int64_t positivesSeen = 0;
    std::int64_t negativesSeen = 0;
    const auto countsAt = [&](const DistinctValue& x) {
        const std::int64_t twiceBelow = 2 * negativesSeen + x.negatives;
        const std::int64_t twiceAbove = 2 * (nPos_ - positivesSeen) - x.positives;
        positivesSeen += x.positives;
        negativesSeen += x.negatives;
        pairs_.twiceOrdered += x.positives * twiceBelow;
        squares_.positives += Int128{x.positives} * twiceBelow * twiceBelow;
        squares_.negatives += Int128{x.negatives} * twiceAbove * twiceAbove;
        return TwiceCounts{static_cast<std::uint32_t>(twiceBelow), static_cast<std::uint32_t>(twiceAbove)};
    };
    const auto keep = [&](std::size_t position, bool positive, TwiceCounts counts) {
        twice_[position] = positive ? counts.ofPositive : counts.ofNegative;
    };
    space.observations().visit([&](const auto& columns) { valuesort::rankCases(columns, countsAt, keep); });
    pairs_.twicePairs = 2 * nPos_ * nNeg_;
}

StateSums PairedComponents::centred(const StateSums& products, const PairedComponents& other) const noexcept
{
    // Over the cases of either state the components add up to the same total, the number of ordered pairs.
    const Int128 productOfTotals = Int128{pairs_.twiceOrdered} * other.pairs_.twiceOrdered;
    return {nPos_ * products.positives - productOfTotals, nNeg_ * products.negatives - productOfTotals};
}

double PairedComponents::covarianceOf(const StateSums& centredSums) const noexcept
{
    const double nPos = static_cast<double>(nPos_);
    const double nNeg = static_cast<double>(nNeg_);
    return meanProduct(centredSums.negatives, nNeg, nPos) + meanProduct(centredSums.positives, nPos, nNeg);
}

} // namespace ROCALG_920
