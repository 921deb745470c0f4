#include "host/ColumnRecordIter.h"
#include "host/VexMV.h"
#include "stats/ROCIndependentStats.h"
#include "stats/ROCPairedStats.h"
#include "stats/RocIndependCompare.h"
#include "stats/RocPairedCompare.h"
#include "tests/results/FixedStats.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

using namespace ROCALG_920;
using namespace results_test;
using VexCommon_920::ColumnRecordIter;
using VexCommon_920::VexMV;

/// A record with this area and standard error.
struct AreaRecord {
    AreaRecord(double area, double stdError) : stats(space, {.area = area, .stdError = stdError}) {}

    ROCSpace space = interleavedSpace();
    FixedStats stats;
    ROCOutBase record{0, stats, false};
};

TEST(ComparisonRecord, TakesTheTestFromTheComparisonAndTheDifferenceFromTheRecords)
{
    AreaRecord first(0.8, 0.03);
    AreaRecord second(0.7, 0.04);
    FixedComparison comparison({.covariance = 0.0006, .z = 2.5, .zSig = 0.0124, .interval = {0.02, 0.18}});
    const ROCComparisonOutStats record(first.record, second.record, comparison);
    EXPECT_EQ(record.getCompare1Stats(), &first.record);
    EXPECT_EQ(record.getCompare2Stats(), &second.record);
    EXPECT_EQ(record.getZStats(), 2.5);
    EXPECT_EQ(record.getAsymptoticSig(), 0.0124);
    EXPECT_EQ(record.getCILower(), 0.02);
    EXPECT_EQ(record.getCIUpper(), 0.18);
    EXPECT_NEAR(record.getAUCDiff(), 0.1, 1e-15);
    EXPECT_DOUBLE_EQ(record.getStdErrorDiff(), std::sqrt(0.0013));

    const ROCComparisonOutStats swapped(second.record, first.record, comparison);
    EXPECT_EQ(swapped.getAUCDiff(), -record.getAUCDiff());
}

TEST(ComparisonRecord, OfIndependentAreasHasNoCovariance)
{
    AreaRecord first(0.8, 0.03);
    AreaRecord second(0.7, 0.04);
    ROCSpace space = interleavedSpace();
    ROCIndependentStats stats(space, ROCConst_920::NonParametric, true, 0.95);
    RocIndependCompare comparison(stats, stats, 0.95);
    EXPECT_DOUBLE_EQ(ROCComparisonOutStats(first.record, second.record, comparison).getStdErrorDiff(), 0.05);
}

TEST(ComparisonRecord, WhatDependsOnAMissingValueIsMissing)
{
    const double missing = VexMV::Missing();
    const struct {
        double area1, stdError1, area2, stdError2, covariance;
        bool differenceMissing, stdErrorMissing;
    } cases[] = {
        {missing, 0.03, 0.7, 0.04, 0.0006, true, false},
        {0.8, 0.03, missing, 0.04, 0.0006, true, false},
        {0.8, missing, 0.7, 0.04, 0.0006, false, true},
        {0.8, 0.03, 0.7, missing, 0.0006, false, true},
        {0.8, 0.03, 0.7, 0.04, missing, false, true},
        {missing, missing, missing, missing, missing, true, true},
    };
    for (const auto& c : cases) {
        AreaRecord first(c.area1, c.stdError1);
        AreaRecord second(c.area2, c.stdError2);
        FixedComparison comparison({.covariance = c.covariance, .z = 2.5, .zSig = 0.0124, .interval = {0.02, 0.18}});
        const ROCComparisonOutStats record(first.record, second.record, comparison);
        EXPECT_EQ(VexMV::IsMissing(record.getAUCDiff()), c.differenceMissing);
        EXPECT_EQ(VexMV::IsMissing(record.getStdErrorDiff()), c.stdErrorMissing);
        EXPECT_EQ(record.getZStats(), 2.5);
        EXPECT_EQ(record.getCIUpper(), 0.18);
    }
}

/// Column 0 holds the state, column 1 the values of interleavedSpace, column 2 others in the same order.
class PairedRecord : public testing::Test {
protected:
    std::array<double, 4> states{0, 1, 0, 1};
    std::array<double, 4> values{1, 2, 3, 4};
    std::array<double, 4> stretched{1, 4, 9, 16};
    ColumnRecordIter iter{{states, values, stretched}};
    ROCSpace space1 = indexed(interleavedSpace(), 1);
    ROCSpace space2 = indexed(spaceOf({{false, 1}, {true, 4}, {false, 9}, {true, 16}}), 2);
    ROCPairedStats stats1{space1, true, 0.95};
    ROCPairedStats stats2{space2, true, 0.95};
    ROCOutBase record1{1, stats1, false};
    ROCOutBase record2{2, stats2, false};

private:
    static ROCSpace indexed(ROCSpace space, int testVar)
    {
        space.setTestVarInd(testVar);
        return space;
    }
};

TEST_F(PairedRecord, OfAreasThatNeverDifferHasExactlyNoStandardError)
{
    for (const bool itself : {true, false}) {
        SCOPED_TRACE(itself);
        RocPairedCompare comparison(stats1, itself ? stats1 : stats2, true, 0.95, 0, 1.0);
        iter.NewPass();
        comparison.computeStats(iter);
        const ROCComparisonOutStats record(record1, itself ? record1 : record2, comparison);
        EXPECT_EQ(record.getAUCDiff(), 0.0);
        EXPECT_EQ(record.getStdErrorDiff(), 0.0);
        EXPECT_EQ(record.getZStats(), 0.0);
        EXPECT_EQ(record.getAsymptoticSig(), 1.0);
        EXPECT_EQ(record.getCILower(), 0.0);
        EXPECT_EQ(record.getCIUpper(), 0.0);
    }
}

TEST_F(PairedRecord, OfAComparisonThatWasNotComputedIsMissing)
{
    RocPairedCompare comparison(stats1, stats2, true, 0.95, 0, 1.0);
    const ROCComparisonOutStats record(record1, record2, comparison);
    EXPECT_EQ(record.getAUCDiff(), 0.0);
    for (const double value : {record.getStdErrorDiff(), record.getZStats(), record.getAsymptoticSig(),
                               record.getCILower(), record.getCIUpper()})
        EXPECT_TRUE(VexMV::IsMissing(value));
}

TEST_F(PairedRecord, NeedsBothStandardErrors)
{
    RocPairedCompare comparison(stats1, stats2, true, 0.95, 0, 1.0);
    comparison.computeStats(iter);
    AreaRecord without(0.75, VexMV::Missing());
    EXPECT_TRUE(VexMV::IsMissing(ROCComparisonOutStats(record1, without.record, comparison).getStdErrorDiff()));
    EXPECT_TRUE(VexMV::IsMissing(ROCComparisonOutStats(without.record, record2, comparison).getStdErrorDiff()));
}

} // namespace
