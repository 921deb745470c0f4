#include "host/VexMV.h"
#include "stats/ROCIndependentStats.h"
#include "stats/ROCPairedStats.h"
#include "tests/results/FixedStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <type_traits>

namespace {

using namespace ROCALG_920;
using namespace results_test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using VexCommon_920::VexMV;

static_assert(!std::is_copy_constructible_v<ROCOutBase> && !std::is_copy_assignable_v<ROCOutBase>);

TEST(Record, KeepsEverythingWhenSpaceAndStatisticsAreGone)
{
    std::optional<ROCSpace> space = spaceOf({{false, 1, 3}, {true, 2}, {false, 3}, {true, 3, 2}, {true, 5}});
    auto stats = std::make_unique<FixedStats>(
        *space,
        FixedStats::Values{
            .area = 0.8, .giniIndex = 0.6, .stdError = 0.04, .asymptoticSig = 0.01, .interval = {0.7, 0.9}});
    const ROCOutBase record(4, 7, ROCConst_920::Less, 5.5, *stats, true);
    stats.reset();
    space.reset();

    EXPECT_EQ(record.getTestVarInd(), 4);
    EXPECT_EQ(record.getGroupVarInd(), 7);
    EXPECT_EQ(record.getGroupValueOperation(), ROCConst_920::Less);
    EXPECT_EQ(record.getGroupValue(), 5.5);
    EXPECT_TRUE(record.isDistrbutionChanged());
    EXPECT_TRUE(record.existTies()); // 3 occurs with both states
    EXPECT_EQ(record.getPositiveCount(), 3);
    EXPECT_EQ(record.getNegativeCount(), 2);
    EXPECT_EQ(record.getPosFreqCount(), 4.0);
    EXPECT_EQ(record.getNegFreqCount(), 4.0);
    EXPECT_FALSE(record.isZeroCountExist());
    EXPECT_THAT(record.getCutOffPoints(), ElementsAre(0, 1.5, 2.5, 4, 6));
    EXPECT_THAT(record.getSensitivitySpecificity(),
                ElementsAre(Pair(1, 0), Pair(1, 0.5), Pair(2. / 3, 0.5), Pair(1. / 3, 1), Pair(0, 1)));
    EXPECT_THAT(record.getKolmogorovSmirnov(), Pair(0.5, 1.5));
    EXPECT_EQ(record.getArea(), 0.8);
    EXPECT_EQ(record.getGiniIndex(), 0.6);
    EXPECT_EQ(record.getStdError(), 0.04);
    EXPECT_EQ(record.getAsymptoticSig(), 0.01);
    EXPECT_EQ(record.getCILower(), 0.7);
    EXPECT_EQ(record.getCIUpper(), 0.9);
}

TEST(Record, WithoutAGroupSaysSo)
{
    ROCSpace space = interleavedSpace();
    FixedStats stats(space, {});
    const ROCOutBase record(4, stats, false);
    EXPECT_EQ(record.getGroupVarInd(), -1);
    EXPECT_EQ(record.getGroupValueOperation(), ROCConst_920::Equal);
    EXPECT_TRUE(VexMV::IsMissing(record.getGroupValue()));
    EXPECT_FALSE(record.isDistrbutionChanged());
    EXPECT_FALSE(record.existTies());
}

TEST(Record, CoordinatesAreTheMeasuredPointsOfTheDrawnCurve)
{
    // The step from one true positive to four passes two interpolated points, the fifth and sixth drawn.
    ROCSpace tied = spaceOf(
        {{true, 5}, {true, 5}, {true, 5}, {false, 5}, {false, 2}, {true, 1}, {false, 0}});
    FixedStats tiedStats(tied, {});
    const ROCOutBase record(0, tiedStats, false);
    EXPECT_THAT(record.getPrecisionRecallDraw(),
                ElementsAre(Pair(4. / 7, 1), Pair(2. / 3, 1), Pair(0.6, 0.75), Pair(0.75, 0.75), Pair(0.75, 0.5),
                            Pair(0.75, 0.25), Pair(0.75, 0)));
    EXPECT_THAT(record.getPrecisionRecallCoordinates(),
                ElementsAre(Pair(4. / 7, 1), Pair(2. / 3, 1), Pair(0.6, 0.75), Pair(0.75, 0.75), Pair(0.75, 0)));

    ROCSpace untied = interleavedSpace();
    FixedStats untiedStats(untied, {});
    const ROCOutBase measuredOnly(0, untiedStats, false);
    EXPECT_EQ(measuredOnly.getPrecisionRecallDraw().size(), 5u);
    EXPECT_EQ(measuredOnly.getPrecisionRecallCoordinates(), measuredOnly.getPrecisionRecallDraw());
}

TEST(Record, ListsThatWereNotAskedForAreEmpty)
{
    ROCSpace space = spaceOf({{false, 1}, {true, 2}, {false, 3}, {true, 4}}, {.needPR = false, .needROC = false});
    FixedStats stats(space, {});
    const ROCOutBase record(0, stats, false);
    EXPECT_THAT(record.getPrecisionRecallDraw(), IsEmpty());
    EXPECT_THAT(record.getPrecisionRecallCoordinates(), IsEmpty());
    EXPECT_THAT(record.getSensitivitySpecificity(), IsEmpty());
    EXPECT_THAT(record.getKolmogorovSmirnov(), Pair(-1, 0));
}

TEST(Record, StandardErrorIsTheRootOfWhatPairedStatisticsGive)
{
    ROCSpace space = interleavedSpace();
    ROCPairedStats stats(space, true, 0.95);
    const ROCOutBase record(0, stats, false);
    EXPECT_EQ(record.getArea(), 0.75);
    EXPECT_DOUBLE_EQ(record.getStdError(), std::sqrt(0.125));
}

TEST(Record, OneStateOnlyLeavesTheAreaMissing)
{
    ROCSpace positives = spaceOf({{true, 1}, {true, 2}, {true, 3}});
    ROCSpace negatives = spaceOf({{false, 1}, {false, 2}, {false, 3}});
    ROCSpace none = spaceOf({});
    for (ROCSpace* space : {&positives, &negatives, &none}) {
        ROCIndependentStats independent(*space, ROCConst_920::NonParametric, true, 0.95);
        ROCPairedStats paired(*space, true, 0.95);
        for (ROCStats* stats : {static_cast<ROCStats*>(&independent), static_cast<ROCStats*>(&paired)}) {
            const ROCOutBase record(0, *stats, false);
            EXPECT_TRUE(record.isZeroCountExist());
            EXPECT_EQ(record.getPositiveCount(), space == &positives ? 3 : 0);
            EXPECT_EQ(record.getNegativeCount(), space == &negatives ? 3 : 0);
            EXPECT_THAT(record.getCutOffPoints(), IsEmpty());
            for (const double value : {record.getArea(), record.getGiniIndex(), record.getStdError(),
                                       record.getAsymptoticSig(), record.getCILower(), record.getCIUpper()})
                EXPECT_TRUE(VexMV::IsMissing(value));
        }
    }
}

} // namespace
