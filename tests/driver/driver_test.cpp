#include "driver/ROCCompute.h"
#include "driver/ROCReporter.h"
#include "host/ColumnRecordIter.h"
#include "host/VexMV.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace ROCALG_920;
using VexCommon_920::VexMV;

TEST(ROCReporter, AnswersItsTwoMeasuresAndNoOther)
{
    ROCReporter reporter(12);
    EXPECT_EQ(reporter.DiscreteMeasure("records"), 12);
    reporter.SetNRecords(34);
    reporter.SetPercentage(0.25);
    EXPECT_EQ(reporter.DiscreteMeasure("records"), 34);
    EXPECT_EQ(reporter.ScaleMeasure("percentage"), 0.25);
    for (const std::string name : {"", "Records", "records ", "record", "percentage"})
        EXPECT_EQ(reporter.DiscreteMeasure(name), -1) << name;
    for (const std::string name : {"", "PERCENTAGE", "percentage ", "records"})
        EXPECT_TRUE(VexMV::IsMissing(reporter.ScaleMeasure(name))) << name;
}

TEST(RunMonitor, TellsCountsThatAnIntCannotHoldByItsLimit)
{
    struct Listener final : VexCommon_920::ProgressListener {
        int Notify(VexCommon_920::ProgressReport& report) override
        {
            records = report.DiscreteMeasure("records");
            return 0;
        }
        int records = 0;
    } listener;
    VexMath_920::VexCancelInfo noQuery(nullptr);
    RunMonitor monitor(&listener, noQuery);
    monitor.announceRecords(3'000'000'000);
    EXPECT_EQ(listener.records, 2147483647);
}

TEST(ROCCompute, MidPointOfTheRecordsLeavesTheIteratorAtTheFirst)
{
    const std::vector<double> values{3, 9, 1, 7};
    VexCommon_920::ColumnRecordIter records({values});
    ROCSetting setting;
    VexXML_920::VexVarList variables;
    ROCCompute driver(setting, variables);
    EXPECT_EQ(driver.computeMidPoint(records, 0), 5.0);
    EXPECT_EQ((*records.Next())[0], 3.0);
    EXPECT_EQ(driver.getResult(), nullptr);
}

} // namespace
