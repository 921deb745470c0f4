#include "tests/driver/analyses.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace roctest;
using namespace ROCALG_920;

TEST(Facade, RunsAgainWithFreshStatusAndWarnings)
{
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        HostData data = analysisData(24);
        const ROCSetting setting = settingOf(analysis);
        const Outcome expected = analyse(setting, data);
        Host host(setting, data);
        EXPECT_EQ(host.outcome(), Outcome{});
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(host.run(), 0);
            EXPECT_EQ(host.outcome(), expected);
        }
        const ROCOutBase& early = host.record();

        // An error keeps the results of the last good run.
        data.columns = analysisData(0).columns;
        EXPECT_EQ(host.run(), statusCode::noData);
        EXPECT_EQ(host.facade.GetStatus(), VexCommon_920::VexStatus(statusCode::noData, false));
        EXPECT_FALSE(host.facade.IsModelBuilt());
        EXPECT_EQ(host.outcome().records, expected.records);

        data.columns = analysisData(100).columns;
        EXPECT_EQ(host.run(), 0);
        EXPECT_EQ(host.outcome(), analyse(setting, data));
        EXPECT_EQ(numbers(early), expected.records[0]); // records of earlier runs live on
    }
}

TEST(Facade, ForgetsAConstantGroupBetweenRuns)
{
    HostData data = analysisData(24);
    data.columns[group].swap(data.columns[constant]);
    ROCSetting setting = areasOf({test1});
    setting.setMidPointGroupVar(group);
    setting.setComparisonType(ROCConst_920::IndependentComparison);
    Host host(setting, data);
    EXPECT_EQ(host.run(), statusCode::groupConstant);
    data.columns[group].swap(data.columns[constant]);
    EXPECT_EQ(host.run(), 0);
    EXPECT_EQ(host.outcome(), analyse(setting, data));
}

TEST(Facade, ListenerAndCancelQueryCanBeRemoved)
{
    HostData data = analysisData(24);
    Host host(areasOf({test1}), data);
    EXPECT_EQ(host.run(Script::never, 0), statusCode::cancelled);
    EXPECT_EQ(host.announcements.size(), 2u);
    host.facade.SetProgressListener(nullptr);
    host.facade.SetCancelPtr(nullptr);
    EXPECT_EQ(host.run(Script::never, 0), 0);
    EXPECT_EQ(host.calls(Script::notify) + host.calls(Script::cancelQuery), 0);
}

TEST(Facade, DisplaysTheResultsToTheCharacterAndNothingBeforeARun)
{
    HostData data;
    data.columns = {{1, 0, 1, 0}, {4, 3, 3, 1}};
    data.variables.AddTwoValued("disease");
    data.variables.AddContinuous("marker");
    ROCSetting setting = areasOf({1});
    setting.setNeedPR(true);
    Host host(setting, data);
    std::ostringstream shown;
    host.facade.Display(shown);
    EXPECT_EQ(shown.str(), "");
    ASSERT_EQ(host.run(), 0);
    host.facade.Display(shown);
    // Counted by hand: 3.5 of 4 pairs in order; the maximum 0.5 is reached at 2 and at 3.5, the last one counts.
    EXPECT_EQ(shown.str(), R"(/////////////////////
Test Var:marker
Negative count:2 Positive count:2
Negative frequency count:2 Positive frequency count:2
Area:0.875 Gini Index:0.75 Std Error:0.200909 Asymptotic Sig.:0.0619696 CILower:0.481225 CIUpper: 1.26878
------------ROC Curve-----------:
CutPoints:[0,2,3.5,5]
Sensitivity:[1,1,0.5,0]
Specificity:[0,0.5,1,1]
Max K-S: 0.5 Cutoff of Max K-S: 3.5
Dose Ties exist? yes
Distribution changes to Nonparmetric? no
Positive or Negative count is zero (0)? no
------------PR Curve-----------:
Precision:[0.5,0.666667,1,1]
Recall:[1,1,0.5,0]
------------PR Coordinates-----------:
Precision:[0.5,0.666667,1,1]
Recall:[1,1,0.5,0]

)");
}

} // namespace
