#include "host/ColumnRecordIter.h"
#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "stats/ROCIndependentStats.h"
#include "stats/RocIndependCompare.h"
#include "tests/stats/spaces.h"
#include "tests/support/Exact.h"
#include "tests/support/oracle.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

namespace {

using namespace ROCALG_920;
using namespace roctest;
using VexCommon_920::ColumnRecordIter;
using VexCommon_920::VexMV;

constexpr double sixDigits = 5e-7; // the worked values are printed to six digits

TEST(ROCIndependentStats, GivesTheWorkedValues)
{
    const Sample four{{1, 0, 1, 0}, {1, 2, 3, 4}, {}};
    const Sample eight{{1, 1, 1, 1, 0, 0, 0, 0}, {2, 3, 3, 5, 1, 2, 3, 4}, {}};
    const Sample equal{{1, 1, 0, 0}, {7, 7, 7, 7}, {}};
    const Sample separated{{1, 1, 0, 0}, {3, 4, 1, 2}, {}};
    struct Case {
        const Sample& sample;
        ROCConst_920::Distribution distribution;
        bool larger;
        double area, gini, stdError, significance, lower, upper;
    };
    constexpr auto nonParametric = ROCConst_920::NonParametric;
    constexpr auto biNegative = ROCConst_920::BiNegativeExponential;
    const Case cases[] = {
        {four, nonParametric, true, 0.25, -0.5, 0.279508, 0.371093, -0.297827, 0.797827},
        {four, nonParametric, false, 0.75, 0.5, 0.279508, 0.371093, 0.202173, 1.297827},
        {four, biNegative, true, 0.25, -0.5, 0.276296, 0.365557, -0.291530, 0.791530},
        {four, biNegative, false, 0.75, 0.5, 0.276296, 0.365557, 0.208470, 1.291530},
        {eight, nonParametric, true, 0.65625, 0.3125, 0.205069, 0.446096, 0.254322, 1.058178},
        {eight, biNegative, true, 0.65625, 0.3125, 0.204154, 0.444060, 0.256116, 1.056384},
        {equal, nonParametric, true, 0.5, 0, 0.322749, 1, -0.132576, 1.132576},
        {separated, nonParametric, true, 1, 1, 0, 0, 1, 1},
        {separated, nonParametric, false, 0, -1, 0, 0, 0, 0},
        {separated, biNegative, true, 1, 1, 0, 0, 1, 1},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(testing::Message() << "area " << expected.area << ", standard error " << expected.stdError);
        ROCSpace space = areaSpace(expected.sample.states, expected.sample.values, 4);
        ROCIndependentStats stats(space, expected.distribution, expected.larger, 0.95);
        EXPECT_EQ(stats.getArea(), expected.area);
        EXPECT_EQ(stats.getGiniIndex(), expected.gini);
        EXPECT_NEAR(stats.getStdError(), expected.stdError, sixDigits);
        EXPECT_NEAR(stats.getAsymptoticSignificant(), expected.significance, sixDigits);
        EXPECT_NEAR(stats.getConfidenceInterval().first, expected.lower, 2 * sixDigits);
        EXPECT_NEAR(stats.getConfidenceInterval().second, expected.upper, 2 * sixDigits);
        EXPECT_EQ(stats.getTestVarInd(), 4);
        EXPECT_EQ(&stats.getROCSpace(), &space);
        EXPECT_TRUE(std::ranges::is_sorted(space.getROCData(), independentSortMethod));
    }
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
        EXPECT_LE(ulpsApart(ROCIndependentStats(space, ROCConst_920::NonParametric, true, 0.95).getStdError(), truth), 2);
    }
}

TEST(ROCIndependentStats, IsMissingWithoutBothStates)
{
    for (const std::vector<double>& states : {std::vector<double>{}, {1}, {1, 1, 1}, {0, 0, 0}}) {
        ROCSpace space = areaSpace(states, std::vector<double>(states.size(), 1.0));
        const ROCIndependentStats stats(space, ROCConst_920::NonParametric, true, 0.95);
        for (const double value : {stats.getArea(), stats.getStdError(), stats.getGiniIndex(), stats.getAsymptoticSignificant(),
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

TEST(RocIndependCompare, GivesTheWorkedValuesAndTheirMirrorImage)
{
    IndependentPair areas({{1, 0, 1, 0}, {1, 2, 3, 4}, {}}, {{1, 1, 1, 1, 0, 0, 0, 0}, {2, 3, 3, 5, 1, 2, 3, 4}, {}});
    RocIndependCompare forward(areas.first, areas.second, 0.95);
    RocIndependCompare backward(areas.second, areas.first, 0.95);
    ColumnRecordIter noRecords({});
    EXPECT_TRUE(VexMV::IsMissing(forward.getZ()));
    for (int run = 1; run <= 2; ++run) { // a second run gives the same
        EXPECT_TRUE(forward.computeStats(noRecords));
        EXPECT_NEAR(forward.getZ(), -1.171873, sixDigits);
        EXPECT_NEAR(forward.getZSig(), 0.241248, sixDigits);
        EXPECT_NEAR(forward.getZInterval().first, -1.085705, sixDigits);
        EXPECT_NEAR(forward.getZInterval().second, 0.273205, sixDigits);
    }
    EXPECT_TRUE(backward.computeStats(noRecords));
    EXPECT_EQ(backward.getZ(), -forward.getZ());
    EXPECT_EQ(backward.getZSig(), forward.getZSig());
    EXPECT_EQ(backward.getZInterval().first, -forward.getZInterval().second);
    EXPECT_TRUE(VexMV::IsMissing(forward.getCovariance()));
}

TEST(RocIndependCompare, IsNotComputedWithoutBothStates)
{
    const Sample both{{1, 1, 0, 0}, {3, 4, 1, 2}, {}};
    const Sample oneState{{1, 1, 1}, {1, 2, 3}, {}};
    ColumnRecordIter noRecords({});
    for (const auto& [one, two] : {std::pair(both, oneState), std::pair(oneState, both)}) {
        IndependentPair lacking(one, two);
        RocIndependCompare missing(lacking.first, lacking.second, 0.95);
        EXPECT_FALSE(missing.computeStats(noRecords));
        for (const double value : {missing.getZ(), missing.getZSig(), missing.getZInterval().first, missing.getZInterval().second})
            EXPECT_TRUE(VexMV::IsMissing(value));
    }
}

} // namespace
