#include "tests/driver/analyses.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

namespace {

using namespace roctest;
using namespace ROCALG_920;

TEST(Facade, IsEmptyBeforeARun)
{
    HostData data = analysisData(24);
    ROCSetting setting;
    const RocAlgorithm facade(setting, data.variables);
    Outcome nothing;
    nothing.code = 0;
    EXPECT_EQ(readBack(facade), nothing);
    EXPECT_EQ(facade.GetOutputStats(), nullptr);
}

TEST(Facade, KeepsItsOwnSettings)
{
    HostData data = analysisData(24);
    ROCSetting setting = settingOf(analyses()[0]);
    const Outcome expected = analyse(setting, data);
    RocAlgorithm facade(setting, data.variables);
    setting = ROCSetting();
    VexCommon_920::ColumnRecordIter records = data.records();
    EXPECT_TRUE(facade.BuildModel(records).IsOK());
    EXPECT_EQ(readBack(facade), expected);
}

TEST(Facade, ReturnsTheStatusThatItKeeps)
{
    HostData data = analysisData(0);
    ROCSetting setting = settingOf(analyses()[0]);
    RocAlgorithm facade(setting, data.variables);
    VexCommon_920::ColumnRecordIter records = data.records();
    const VexCommon_920::VexStatus returned = facade.BuildModel(records);
    EXPECT_EQ(returned, VexCommon_920::VexStatus(statusCode::noData, false));
    EXPECT_EQ(facade.GetStatus(), returned);
}

TEST(Facade, RunsAgainWithFreshStatusAndWarnings)
{
    HostData data = analysisData(24);
    HostData none = analysisData(0);
    HostData longer = analysisData(100);
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        ROCSetting setting = settingOf(analysis);
        const Outcome expected = analyse(setting, data);
        RocAlgorithm facade(setting, data.variables);
        VexCommon_920::ColumnRecordIter records = data.records();
        for (int i = 0; i < 2; ++i) {
            EXPECT_TRUE(facade.BuildModel(records).IsOK());
            EXPECT_EQ(readBack(facade), expected);
        }
        const ROCOutBase* const early = facade.GetOutputStats()->getROCBaseStats()[0];
        const Numbers earlyNumbers = numbers(*early);

        // An error keeps the results of the last good run.
        VexCommon_920::ColumnRecordIter noRecords = none.records();
        EXPECT_EQ(facade.BuildModel(noRecords).GetErrorCode(), statusCode::noData);
        EXPECT_FALSE(facade.IsModelBuilt());
        EXPECT_EQ(readBack(facade).records, expected.records);

        VexCommon_920::ColumnRecordIter moreRecords = longer.records();
        EXPECT_TRUE(facade.BuildModel(moreRecords).IsOK());
        EXPECT_EQ(readBack(facade), analyse(setting, longer));
        EXPECT_EQ(numbers(*early), earlyNumbers); // records of earlier runs live on
    }
}

TEST(Facade, ForgetsAConstantGroupBetweenRuns)
{
    HostData data = analysisData(24);
    HostData constantData = analysisData(24);
    constantData.columns[group].assign(24, 4.0);
    ROCSetting setting = settingOf(analyses()[0]);
    setting.setMidPointGroupVar(group);
    setting.setComparisonType(ROCConst_920::IndependentComparison);
    RocAlgorithm facade(setting, data.variables);
    VexCommon_920::ColumnRecordIter constantRecords = constantData.records();
    EXPECT_EQ(facade.BuildModel(constantRecords).GetErrorCode(), statusCode::groupConstant);
    VexCommon_920::ColumnRecordIter records = data.records();
    EXPECT_EQ(facade.BuildModel(records).GetErrorCode(), 0);
    EXPECT_EQ(readBack(facade), analyse(setting, data));
}

TEST(Facade, ListenerAndCancelQueryCanBeReplacedAndRemoved)
{
    HostData data = analysisData(24);
    ROCSetting setting = settingOf(analyses()[0]);
    RocAlgorithm facade(setting, data.variables);
    Script script;
    script.cancelAt = 0;
    ScriptedListener listener(script);
    ScriptedCancel cancel(script);
    facade.SetProgressListener(&listener);
    facade.SetCancelPtr(&cancel);
    VexCommon_920::ColumnRecordIter records = data.records();
    EXPECT_EQ(facade.BuildModel(records).GetErrorCode(), statusCode::cancelled);
    EXPECT_EQ(listener.announcements.size(), 2u);
    facade.SetProgressListener(nullptr);
    facade.SetCancelPtr(nullptr);
    const int calls = script.calls();
    EXPECT_EQ(facade.BuildModel(records).GetErrorCode(), 0);
    EXPECT_EQ(script.calls(), calls);
}

} // namespace
