#include "inference/PairedComponents.h"

#include "summary/SortedValues.h"

namespace ROCALG_920 {

PairedComponents::PairedComponents(const Observations& observations, std::int64_t mostNarrowCases)
    : placements_(observations.counts())
{
    if (!observations.counts().bothStates())
        return;
    if (observations.counts().cases() <= mostNarrowCases)
        rank(observations, narrow_);
    else
        rank(observations, wide_);
}

template <class Twice>
void PairedComponents::rank(const Observations& observations, std::vector<Twice>& twice)
{
    struct PairedCounts {
        Twice ofPositive;
        Twice ofNegative;
    };
    struct CountsAt {
        PlacementSums sums;

        PairedCounts operator()(const DistinctValue& x)
        {
            const PlacementSums::Twice counts = sums.add(x);
            return {static_cast<Twice>(counts.ofPositive), static_cast<Twice>(counts.ofNegative)};
        }
    };
    twice.resize(observations.size());
    const auto keep = [place = twice.data()](std::size_t position, bool positive, PairedCounts counts) {
        place[position] = positive ? counts.ofPositive : counts.ofNegative;
    };
    observations.visit(
        [&](const auto& columns) { placements_ = valuesort::rankCases(columns, CountsAt{placements_}, keep).sums; });
}

StateSums PairedComponents::products(const Observations& cases, const PairedComponents& first,
                                     const PairedComponents& second)
{
    StateSums sums;
    cases.visit([&](const auto& columns) {
        const std::uint32_t* const narrow1 = first.narrow_.data();
        const std::uint32_t* const narrow2 = second.narrow_.data();
        for (std::size_t i = 0; i < first.narrow_.size(); ++i) // factors below 2^32: one 64-bit product
            sums.add(columns.positive(i), std::uint64_t{narrow1[i]} * narrow2[i]);
        for (std::size_t i = 0; i < first.wide_.size(); ++i)
            sums.add(columns.positive(i), Int128{first.wide_[i]} * second.wide_[i]);
    });
    return sums;
}

} // namespace ROCALG_920
