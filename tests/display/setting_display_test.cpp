#include "host/VexDisplay.h"
#include "vexrocproc/ROCSetting.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <utility>

namespace {

using namespace ROCConst_920;
using ROCALG_920::ROCSetting;
using testing::HasSubstr;

std::string textOf(const ROCSetting& setting)
{
    std::ostringstream out;
    setting.Display(out);
    VexDisplay_920::ClearOutStream();
    return out.str();
}

TEST(SettingDisplay, ShowsWhatWasSet)
{
    ROCSetting setting;
    setting.setStateVar(2, 1.0);
    setting.setTestVars({4, 7});
    setting.setSelectGroupVar(3, 2.5, 1.0);
    setting.setNeedPR(true);
    setting.setPRInterpolationType(AlongFP);
    setting.setNeedROC(false);
    setting.setComparisonType(IndependentComparison);
    setting.setClassification(Exclude);
    setting.setDirection(SmallerMorePositive);
    setting.setDistribution(BiNegativeExponential);
    setting.setConfidenceLevel(0.9);
    setting.setFrequencyWeightVar(5); // not shown
    EXPECT_EQ(textOf(setting),
              "ROC setting display start:\n"
              "State Variable Index 2\n"
              "State Variable Positive value 1\n"
              "Test Variables [4,7]\n"
              "Group Variable Index 3\n"
              "Group Defined Type = Select\n"
              "Group Selected Values [2.5,1]\n"
              "Need PR points: true\n"
              "PR iterpolate type = PR interpolate two adjacent points along FP\n"
              "Need ROC points: false\n"
              "Comparison Type = Independent comparison\n"
              "CUTOFF = Exclude\n"
              "TESTPOS = Smaller or lower test result indicates more positive test\n"
              "DISTRIBUTION = Bi-negative Exponential Distribution Assumption\n"
              "CI 0.9\n"
              "ROC setting display end!\n");
}

TEST(SettingDisplay, ShowsDefaults)
{
    EXPECT_EQ(textOf(ROCSetting()),
              "ROC setting display start:\n"
              "State Variable Index -1\n"
              "State Variable Positive value nan\n"
              "Test Variables []\n"
              "Need PR points: false\n"
              "PR points NOT required\n"
              "Need ROC points: true\n"
              "Comparison Type = No comparison\n"
              "CUTOFF = Include\n"
              "TESTPOS = Larger or higher test result indicates more positive test\n"
              "DISTRIBUTION = Nonparametric Assumption\n"
              "CI 0.95\n"
              "ROC setting display end!\n");
}

TEST(SettingDisplay, ShowsTheValuesThatDefineTheGroup)
{
    ROCSetting setting;
    const auto expectLines = [&](const std::string& lines) {
        EXPECT_THAT(textOf(setting), HasSubstr("Test Variables []\n" + lines + "Need PR points:"));
    };
    setting.setCutOffGroupVar(0, 7.5);
    expectLines("Group Variable Index 0\nGroup Defined Type = CutPoint\nGroup Cutoff Values 7.5\n");
    setting.setMidPointGroupVar(1);
    expectLines("Group Variable Index 1\nGroup Defined Type = MidPoint\n");
    setting.setCutOffGroupVar(-1, 7.5); // no group variable, no group
    expectLines("");
}

TEST(SettingDisplay, GivesTheHostItsStreamBack)
{
    std::ostringstream hosts;
    std::ostringstream ours;
    VexDisplay_920::SetOutStream(hosts);
    ROCSetting().Display(ours);
    EXPECT_EQ(VexDisplay_920::GetOutStream(), &hosts);
    EXPECT_EQ(hosts.str(), "");

    VexDisplay_920::ClearOutStream();
    ROCSetting().Display(ours);
    EXPECT_EQ(VexDisplay_920::GetOutStream(), &ours); // none to give back
    VexDisplay_920::ClearOutStream();
}

} // namespace
