#include "host/VexMV.h"
#include "stats/ROCComparisonStats.h"
#include "tests/results/FixedStats.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <gmock/gmock.h>

#include <cmath>

/// Records of a comparison that is neither of the library's own.
namespace {

using namespace ROCALG_920;
using namespace results_test;
using testing::DoubleEq;
using testing::DoubleNear;
using VexCommon_920::VexMV;

struct FixedComparison final : ROCComparisonStats {
    explicit FixedComparison(double itsCovariance) : covariance(itsCovariance) {}
    double getCovariance() const override { return covariance; }
    double getZ() const override { return 2.5; }
    double getZSig() const override { return 0.0124; }
    std::pair<double, double> getZInterval() const override { return {0.02, 0.18}; }
    bool computeStats(VexCommon_920::MultiPassRecordIter&) override { return true; }

    double covariance;
};

/// A record with this area and standard error.
struct AreaRecord {
    AreaRecord(double area, double stdError) : stats(space, area, stdError) {}

    ROCSpace space{true, true, true, true, true};
    FixedStats stats;
    ROCOutBase record{0, stats, false};
};

TEST(ComparisonRecord, TakesTheTestFromTheComparisonAndTheDifferenceFromTheRecords)
{
    AreaRecord first(0.8, 0.03);
    AreaRecord second(0.7, 0.04);
    FixedComparison comparison(0.0006);
    const ROCComparisonOutStats record(first.record, second.record, comparison);
    EXPECT_EQ(record.getCompare1Stats(), &first.record);
    EXPECT_EQ(record.getCompare2Stats(), &second.record);
    EXPECT_THAT((std::vector{record.getAUCDiff(), record.getStdErrorDiff(), record.getZStats(),
                             record.getAsymptoticSig(), record.getCILower(), record.getCIUpper()}),
                testing::ElementsAre(DoubleNear(0.1, 1e-15), DoubleEq(std::sqrt(0.0013)), 2.5, 0.0124, 0.02, 0.18));
}

TEST(ComparisonRecord, WhatDependsOnAMissingValueIsMissing)
{
    const struct {
        double area1, stdError1, area2, stdError2, covariance;
        bool differenceMissing, stdErrorMissing;
    } cases[] = {
        {missing, 0.03, 0.7, 0.04, 0.0006, true, false}, {0.8, 0.03, missing, 0.04, 0.0006, true, false},
        {0.8, missing, 0.7, 0.04, 0.0006, false, true},  {0.8, 0.03, 0.7, missing, 0.0006, false, true},
        {0.8, 0.03, 0.7, 0.04, missing, false, true},
    };
    for (const auto& c : cases) {
        AreaRecord first(c.area1, c.stdError1);
        AreaRecord second(c.area2, c.stdError2);
        FixedComparison comparison(c.covariance);
        const ROCComparisonOutStats record(first.record, second.record, comparison);
        EXPECT_EQ(VexMV::IsMissing(record.getAUCDiff()), c.differenceMissing);
        EXPECT_EQ(VexMV::IsMissing(record.getStdErrorDiff()), c.stdErrorMissing);
        EXPECT_EQ(record.getZStats(), 2.5);
    }
}

} // namespace
