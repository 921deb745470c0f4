#include "host/ColumnRecordIter.h"
#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "stats/ROCIndependentStats.h"
#include "stats/ROCPairedStats.h"
#include "stats/RocIndependCompare.h"
#include "tests/stats/spaces.h"
#include "tests/support/Exact.h"
#include "tests/support/oracle.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

namespace {

using namespace ROCALG_920;
using namespace roctest;
using VexCommon_920::ColumnRecordIter;
using VexCommon_920::VexMV;

TEST(Statistics, OrderTheListOfTheirSpaceByStateOrNotAtAll)
{
    const Sample s = drawSample(shapes()[1], 7, 40);
    ROCSpace space = areaSpace(s.states, s.values, 4);
    const std::vector<ROCData> arrival = space.getROCData();
    EXPECT_EQ(ROCPairedStats(space, true, 0.95).getTestVarInd(), 4);
    EXPECT_EQ(space.getROCData(), arrival);
    ROCIndependentStats independent(space, ROCConst_920::NonParametric, true, 0.95);
    EXPECT_TRUE(std::ranges::is_sorted(space.getROCData(), independentSortMethod));
    EXPECT_EQ(independent.getTestVarInd(), 4);
    EXPECT_EQ(&independent.getROCSpace(), &space);
}

/// The sums behind the standard error straight from their definition, triple by triple, in sixths.
TEST(ROCIndependentStats, CountsOrderedTriples)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        const Sample s = drawSample(shapes()[seed % 2], seed, 3 + seed % 20);
        TripleSums sixths;
        const auto score = [&](std::size_t one, std::size_t two, std::size_t against, double sign) {
            const double d1 = sign * (s.values[one] - s.values[against]);
            const double d2 = sign * (s.values[two] - s.values[against]);
            return d1 < 0 || d2 < 0 ? 0 : d1 > 0 && d2 > 0 ? 6 : d1 == 0 && d2 == 0 ? 2 : 3;
        };
        for (std::size_t i = 0; i < s.states.size(); ++i)
            for (std::size_t j = 0; j < s.states.size(); ++j)
                for (std::size_t k = 0; k < s.states.size(); ++k)
                    if (s.positive(i) && s.positive(j) && !s.positive(k))
                        sixths.ofNegatives += score(i, j, k, 1.0);
                    else if (!s.positive(i) && !s.positive(j) && s.positive(k))
                        sixths.ofPositives += score(i, j, k, -1.0);
        sixths.ofNegatives /= 2;
        sixths.ofPositives /= 2;
        const Placements placed = placements(s.states, s.values);
        const long double truth = nonparametricStdError(placed.nPos(), placed.nNeg(), placed.twiceOrdered, sixths);
        ROCSpace space = areaSpace(s.states, s.values);
        EXPECT_LE(ulpsApart(ROCIndependentStats(space, ROCConst_920::NonParametric, true, 0.95).getStdError(), truth),
                  2);
    }
}

TEST(ROCIndependentStats, IsMissingWithoutBothStates)
{
    for (const std::vector<double>& states : {std::vector<double>{}, {1}, {1, 1, 1}, {0, 0, 0}}) {
        ROCSpace space = areaSpace(states, std::vector<double>(states.size(), 1.0));
        const ROCIndependentStats stats(space, ROCConst_920::NonParametric, true, 0.95);
        for (const double value :
             {stats.getArea(), stats.getStdError(), stats.getGiniIndex(), stats.getAsymptoticSignificant(),
              stats.getConfidenceInterval().first, stats.getConfidenceInterval().second})
            EXPECT_TRUE(VexMV::IsMissing(value));
    }
}

struct IndependentPair {
    IndependentPair(const Sample& one, const Sample& two)
        : space1(areaSpace(one.states, one.values)), space2(areaSpace(two.states, two.values))
    {
    }
    ROCSpace space1;
    ROCSpace space2;
    ROCIndependentStats first{space1, ROCConst_920::NonParametric, true, 0.95};
    ROCIndependentStats second{space2, ROCConst_920::NonParametric, true, 0.95};
};

TEST(RocIndependCompare, IsNotComputedWithoutBothStates)
{
    const Sample both{{1, 1, 0, 0}, {3, 4, 1, 2}, {}};
    const Sample oneState{{1, 1, 1}, {1, 2, 3}, {}};
    ColumnRecordIter noRecords({});
    for (const auto& [one, two] : {std::pair(both, oneState), std::pair(oneState, both)}) {
        IndependentPair lacking(one, two);
        RocIndependCompare missing(lacking.first, lacking.second, 0.95);
        EXPECT_FALSE(missing.computeStats(noRecords));
        for (const double value : {missing.getZ(), missing.getZSig(), missing.getZInterval().first,
                                   missing.getZInterval().second, missing.getCovariance()})
            EXPECT_TRUE(VexMV::IsMissing(value));
    }
}

} // namespace
