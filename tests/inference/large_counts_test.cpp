#include "inference/BestCutOffs.h"
#include "inference/OrderedTriples.h"
#include "inference/PairedComponents.h"
#include "summary/SortedObservations.h"
#include "tests/support/Exact.h"
#include "tests/support/Sample.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

using namespace ROCALG_920;
using namespace roctest;

constexpr std::int64_t half = std::int64_t{1} << 39;

/// Samples of 2^40 cases, far beyond what rows in memory could hold; the statistics by rational arithmetic.
struct Large {
    std::string_view name;
    std::vector<DistinctValue> values;
    double area, stdError, biNegativeStdError, variance;
};
const std::vector<Large> samples{
    {"balanced, tied",
     {{1, 68719476736, 274877906944},
      {2, 137438953472, 137438953472},
      {3, 137438965817, 68719475959},
      {4, 206158417863, 68719477513}},
     0x1.7bffffe418400p-1,
     0x1.fbbb72878cef7p-22,
     0x1.f7304b7bcebb8p-22,
     0x1.d3800075da572p-43},
    {"one swapped pair", // hardly anything is left of the moments beside the squared area
     {{1, 0, half - 1}, {2, 1, 0}, {3, 0, 1}, {4, half - 1, 0}},
     1.0,
     0x1.bb67ae85827b7p-78,
     0x1.0000000001000p-59,
     0x1p-155},
    {"few positives",
     {{1, 1, 366503875925}, {2, 2, 5}, {3, 3, 733007751831}, {4, 2, 7}},
     0x1.35555555566abp-1,
     0x1.c537e1983f117p-4,
     0x1.b29d0a70c08dcp-4,
     0x1.84104103fc8a3p-7},
    {"one value", {{1, half, half}}, 0.5, 0x1.279a745903c59p-21, 0x1.279a745903c59p-21, 0.0},
};

TEST(LargeCounts, GiveTheStatisticsOfRationalArithmetic)
{
    for (const Large& sample : samples) {
        SCOPED_TRACE(sample.name);
        const ListWalk walk(sample.values);
        const StateCounts cases = countsOf(walk);
        EXPECT_EQ(cases.cases(), 2 * half);
        const OrderedTriples triples = orderedTriples(walk, cases);
        EXPECT_EQ(triples.pairs.area(true), sample.area);
        EXPECT_LE(ulpsApart(stdErrorOfArea(triples, ROCConst_920::NonParametric), sample.stdError), 2);
        EXPECT_LE(ulpsApart(stdErrorOfArea(triples, ROCConst_920::BiNegativeExponential), sample.biNegativeStdError),
                  2);
        const PlacementSums placements = placementSums(walk, cases);
        EXPECT_EQ(placements.pairs().area(true), sample.area);
        EXPECT_LE(ulpsApart(placements.variance(), sample.variance), 3);
        const OrderedTriples same = placements.triples();
        EXPECT_TRUE(same.threeTimesS1 == triples.threeTimesS1 && same.threeTimesS2 == triples.threeTimesS2);
        EXPECT_TRUE(same.tieSums.cubes == triples.tieSums.cubes);
        EXPECT_EQ(deLongVariance(triples), placements.variance());
        // Against itself: the products are the squares, and nothing is left of them.
        EXPECT_EQ(pairedDifference(placements, placements, placements.squares()).stdErrorDiff, 0.0);
    }
}

TEST(LargeCounts, AreThoseOfTheBestCutOffs)
{
    // Youden's index is 1/2 on both sides of the middle value, and 0 elsewhere.
    const std::vector<DistinctValue> tied{{1, 0, half / 2}, {2, half / 2, half / 2}, {3, half / 2, 0}};
    const auto best = bestCutOffs(ListWalk(tied), {1, 3, {half, half}}, {true, true});
    ASSERT_EQ(best.size(), 2u);
    EXPECT_EQ(best[0].cutOff, 1.5);
    EXPECT_EQ(best[0].counts, (CutOffCounts{half, half / 2, half / 2, 0}));
    EXPECT_EQ(best[1].cutOff, 2.5);
    EXPECT_EQ(best[1].counts, (CutOffCounts{half / 2, 0, half, half / 2}));
}

TEST(LargeCounts, TakeWiderIntegersForTheSameSums)
{
    __extension__ typedef unsigned __int128 Wide;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        const Sample sample = drawSample(shapes()[seed % shapes().size()], seed, sizeFor(seed));
        Observations first;
        Observations second;
        for (std::size_t i = 0; i < sample.states.size(); ++i) {
            first.add(sample.positive(i), sample.values[i]);
            second.add(sample.positive(i), sample.others[i]);
        }
        const OrderedTriples narrow =
            withWalk(first, [&](const auto& walk) { return orderedTriples(walk, first.counts()); });
        TripleSweep<Wide> sweep(first.counts());
        withWalk(first, [&](const auto& walk) { forEachValue(walk, [&](const auto& x) { sweep.add(x); }); });
        const OrderedTriples wide = sweep.totals(first.counts());
        EXPECT_TRUE(narrow.pairs.twiceOrdered == wide.pairs.twiceOrdered && narrow.threeTimesS1 == wide.threeTimesS1
                    && narrow.threeTimesS2 == wide.threeTimesS2);

        const PairedComponents narrow1(first);
        const PairedComponents narrow2(second);
        const PairedComponents wide1(first, 0);
        const PairedComponents wide2(second, 0);
        ASSERT_EQ(wide1.size(), narrow1.size());
        for (std::size_t i = 0; i < narrow1.size(); ++i)
            ASSERT_EQ(wide1.twice(i), narrow1.twice(i));
        const StateSums products = PairedComponents::products(first, narrow1, narrow2);
        const StateSums wideProducts = PairedComponents::products(first, wide1, wide2);
        EXPECT_TRUE(products.positives == wideProducts.positives && products.negatives == wideProducts.negatives);
    }
}

} // namespace
