#include "inference/RankedCases.h"

#include "host/VexMV.h"
#include "summary/Observations.h"
#include "summary/SortedValues.h"

#include <cmath>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

namespace {

/// The placements of a test on some of its rows; first counts of cases, then twice the counts behind the components.
class PlacementsByRank {
public:
    explicit PlacementsByRank(std::size_t distinct) : byRank_(distinct) {}

    void count(std::uint32_t rank, bool positive)
    {
        (positive ? byRank_[rank].ofPositive : byRank_[rank].ofNegative) += 1;
        (positive ? cases_.positives : cases_.negatives) += 1;
    }
    /// After the last row.
    [[nodiscard]] PlacementSums place()
    {
        PlacementSums sums(cases_);
        double rank = 0.0;
        for (Counts& at : byRank_) {
            const DistinctValue x{rank++, at.ofPositive, at.ofNegative};
            if (x.positives + x.negatives == 0)
                continue;
            const PlacementSums::Twice twice = sums.add(x);
            at = {static_cast<std::uint32_t>(twice.ofPositive), static_cast<std::uint32_t>(twice.ofNegative)};
        }
        return sums;
    }
    [[nodiscard]] std::uint64_t twice(std::uint32_t rank, bool positive) const noexcept
    {
        return positive ? byRank_[rank].ofPositive : byRank_[rank].ofNegative;
    }

private:
    struct Counts {
        std::uint32_t ofPositive = 0; // up to 2^31 rows, and so twice a count, fit
        std::uint32_t ofNegative = 0;
    };

    std::vector<Counts> byRank_;
    StateCounts cases_;
};

} // namespace

RankedCases::RankedCases(std::span<const double> values, bool larger) : ranks_(values.size(), unknown)
{
    Observations known;
    std::vector<std::uint32_t> rowOf;
    for (std::size_t row = 0; row < values.size(); ++row)
        if (!std::isnan(values[row])) {
            known.add(false, larger ? values[row] : -values[row]);
            rowOf.push_back(static_cast<std::uint32_t>(row));
        }
    struct NextRank {
        std::uint32_t next = 0;
        std::uint32_t operator()(const DistinctValue& /*x*/) { return next++; }
    };
    const auto keep = [&](std::size_t i, bool /*positive*/, std::uint32_t rank) { ranks_[rowOf[i]] = rank; };
    if (known.size() > 0)
        distinct_ = known.visit(
            [&](const auto& columns) { return std::size_t{valuesort::rankCases(columns, NextRank(), keep).next}; });
}

RankedPair compareRanked(std::span<const unsigned char> states, const RankedCases& first, const RankedCases& second)
{
    const auto forEachShared = [&](auto&& visit) {
        for (std::size_t row = 0; row < states.size(); ++row)
            if (first.rank(row) != RankedCases::unknown && second.rank(row) != RankedCases::unknown)
                visit(first.rank(row), second.rank(row), states[row] != 0);
    };
    PlacementsByRank places1(first.distinct());
    PlacementsByRank places2(second.distinct());
    forEachShared([&](std::uint32_t rank1, std::uint32_t rank2, bool positive) {
        places1.count(rank1, positive);
        places2.count(rank2, positive);
    });
    const PlacementSums sums1 = places1.place();
    const PlacementSums sums2 = places2.place();
    if (!sums1.cases().bothStates())
        return {sums1, sums2, {VexMV::Missing(), VexMV::Missing()}};
    StateSums products;
    forEachShared([&](std::uint32_t rank1, std::uint32_t rank2, bool positive) {
        products.add(positive, Int128{places1.twice(rank1, positive)} * places2.twice(rank2, positive));
    });
    return {sums1, sums2, pairedDifference(sums1, sums2, products)};
}

} // namespace ROCALG_920
