#include "driver/RunMonitor.h"
#include "host/VexMV.h"

#include <gtest/gtest.h>

namespace {

TEST(RunMonitor, ReportsTwoMeasuresAndNoCountBeyondAnInt)
{
    struct Listener final : VexCommon_920::ProgressListener {
        int Notify(VexCommon_920::ProgressReport& report) override
        {
            EXPECT_EQ(report.DiscreteMeasure("records"), 2147483647);
            EXPECT_EQ(report.ScaleMeasure("percentage"), 0.0);
            EXPECT_EQ(report.DiscreteMeasure("Records"), -1);
            EXPECT_TRUE(VexCommon_920::VexMV::IsMissing(report.ScaleMeasure("records")));
            return ++calls;
        }
        int calls = 0;
    } listener;
    VexMath_920::VexCancelInfo noQuery(nullptr);
    ROCALG_920::RunMonitor(&listener, noQuery).announceRecords(3'000'000'000);
    EXPECT_EQ(listener.calls, 1);
}

} // namespace
