#include "host/ColumnRecordIter.h"
#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "stats/ROCIndependentStats.h"
#include "stats/ROCPairedStats.h"
#include "stats/RocIndependCompare.h"
#include "tests/stats/spaces.h"

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

TEST(RocIndependCompare, IsNotComputedWithoutBothStates)
{
    const auto space = [](const std::vector<double>& states) { return areaSpace(states, std::vector{3.0, 4.0, 1.0}); };
    ColumnRecordIter noRecords({});
    for (const bool firstHasBoth : {true, false}) {
        ROCSpace space1 = space({1, 1, firstHasBoth ? 0.0 : 1.0});
        ROCSpace space2 = space({1, 1, firstHasBoth ? 1.0 : 0.0});
        ROCIndependentStats first(space1, ROCConst_920::NonParametric, true, 0.95);
        ROCIndependentStats second(space2, ROCConst_920::NonParametric, true, 0.95);
        RocIndependCompare comparison(first, second, 0.95);
        EXPECT_FALSE(comparison.computeStats(noRecords));
        for (const double value : {comparison.getZ(), comparison.getZSig(), comparison.getZInterval().first,
                                   comparison.getZInterval().second, comparison.getCovariance()})
            EXPECT_TRUE(VexMV::IsMissing(value));
    }
}

} // namespace
