#include "host/CancelFlag.h"
#include "host/FunctionListener.h"
#include "host/VexCancelInfo.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using VexCommon_920::CancelFlag;
using VexCommon_920::FunctionListener;
using VexCommon_920::ProgressReport;
using VexMath_920::VexCancelInfo;

TEST(Cancel, AsksTheInstalledQuery)
{
    CancelFlag first;
    CancelFlag second;
    VexCancelInfo info(&first);
    first.Request();
    EXPECT_TRUE(info.IsCancel());
    info.SetCancelPtr(&second);
    EXPECT_FALSE(info.IsCancel());
    info.SetCancelPtr(nullptr);
    EXPECT_FALSE(info.IsCancel());
    first.Reset();
    EXPECT_FALSE(VexCancelInfo(&first).IsCancel());
}

TEST(FunctionListener, HandsTheReportToTheFunction)
{
    struct HalfDone : ProgressReport {
        int DiscreteMeasure(const std::string& name) override { return name == "records" ? 500 : -1; }
        double ScaleMeasure(const std::string&) override { return 0.5; }
    } report;
    int records = 0;
    FunctionListener listener([&](ProgressReport& r) { records = r.DiscreteMeasure("records"); });
    VexCommon_920::ProgressListener& sink = listener;
    sink.Notify(report);
    EXPECT_EQ(records, 500);
    EXPECT_THROW(FunctionListener({}), std::invalid_argument);
}

} // namespace
