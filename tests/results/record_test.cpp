#include "host/VexMV.h"
#include "host/VexVarList.h"
#include "stats/ROCPairedStats.h"
#include "tests/results/FixedStats.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCOutputs.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

namespace {

using namespace ROCALG_920;
using namespace results_test;
using testing::ElementsAre;
using testing::Pair;
using VexCommon_920::VexMV;

/// Area, Gini index, standard error, significance, and the interval.
std::vector<double> areaValuesOf(const ROCOutBase& record)
{
    return {record.getArea(),           record.getGiniIndex(), record.getStdError(),
            record.getAsymptoticSig(), record.getCILower(),   record.getCIUpper()};
}

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

    EXPECT_EQ(record.getPositiveCount(), 3);
    EXPECT_EQ(record.getNegativeCount(), 2);
    EXPECT_EQ(record.getPosFreqCount(), 4.0);
    EXPECT_EQ(record.getNegFreqCount(), 4.0);
    EXPECT_THAT(record.getCutOffPoints(), ElementsAre(0, 1.5, 2.5, 4, 6));
    EXPECT_THAT(record.getSensitivitySpecificity(),
                ElementsAre(Pair(1, 0), Pair(1, 0.5), Pair(2. / 3, 0.5), Pair(1. / 3, 1), Pair(0, 1)));
    EXPECT_THAT(record.getKolmogorovSmirnov(), Pair(0.5, 1.5));
    EXPECT_THAT(areaValuesOf(record), ElementsAre(0.8, 0.6, 0.04, 0.01, 0.7, 0.9));
}

TEST(Record, WithoutAGroupSaysSo)
{
    ROCSpace space = interleavedSpace();
    FixedStats stats(space, {});
    const ROCOutBase record(4, stats, false);
    EXPECT_EQ(record.getGroupVarInd(), -1);
    EXPECT_TRUE(VexMV::IsMissing(record.getGroupValue()));
}

TEST(Record, StandardErrorIsTheRootOfWhatPairedStatisticsGive)
{
    ROCSpace space = interleavedSpace();
    ROCPairedStats stats(space, true, 0.95);
    const ROCOutBase record(0, stats, false);
    EXPECT_EQ(record.getArea(), 0.75);
    EXPECT_DOUBLE_EQ(record.getStdError(), std::sqrt(0.125));
}

TEST(ResultSet, CopiesTheListsAndOwnsNothing)
{
    ROCSpace space = interleavedSpace();
    FixedStats stats(space, {.area = 0.75, .stdError = 0.1});
    ROCOutBase first(0, stats, false);
    ROCOutBase second(1, stats, false);
    FixedComparison compared({});
    ROCComparisonOutStats comparison(first, second, compared);
    VexXML_920::VexVarList varList;
    std::vector<ROCOutBase*> records{&first, &second};
    auto outputs = std::make_unique<ROCOutputs>(varList, records, std::vector{&comparison});
    records.clear();
    EXPECT_THAT(outputs->getROCBaseStats(), ElementsAre(&first, &second));
    EXPECT_THAT(outputs->getROCComparisonStats(), ElementsAre(&comparison));
    outputs.reset();
    EXPECT_EQ(comparison.getCompare2Stats()->getTestVarInd(), 1);
}

} // namespace
