#include "host/VexMV.h"
#include "vexrocproc/ROCSetting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace ROCConst_920;
using ROCALG_920::ROCSetting;
using testing::ElementsAre;
using testing::IsEmpty;
using VexCommon_920::VexMV;

TEST(Setting, StartsWithItsDefaults)
{
    const ROCSetting setting;
    EXPECT_EQ(setting.getStateVar(), -1);
    EXPECT_TRUE(VexMV::IsMissing(setting.getValueOfStateVar()));
    EXPECT_THAT(setting.getTestVars(), IsEmpty());
    EXPECT_EQ(setting.getGroupVar(), -1);
    EXPECT_EQ(setting.getGroupType(), NoGroup);
    EXPECT_TRUE(VexMV::IsMissing(setting.getGroupCutValue()));
    EXPECT_THAT(setting.getGroupSelectValues(), IsEmpty());
    EXPECT_EQ(setting.getComparisonType(), NoComparison);
    EXPECT_TRUE(setting.isIncludeCutOff());
    EXPECT_TRUE(setting.isLargerTestMorePositive());
    EXPECT_EQ(setting.getDistribution(), NonParametric);
    EXPECT_EQ(setting.getConfidienceLevel(), 0.95);
    EXPECT_FALSE(setting.needPR());
    EXPECT_TRUE(setting.needROC());
    EXPECT_EQ(setting.getPRInterpolationType(), AlongTP);
    EXPECT_EQ(setting.getFrequencyWeightVar(), -1);
}

TEST(Setting, KeepsWhatItIsGiven)
{
    ROCSetting setting;
    setting.setStateVar(2, 1.5);
    setting.setTestVars({9});
    setting.setTestVars({3, -1, 3}); // replaces; the driver drops what it cannot use
    setting.setDistribution(BiNegativeExponential);
    setting.setClassification(Exclude);
    setting.setDirection(SmallerMorePositive);
    setting.setNeedPR(true);
    setting.setNeedROC(false);
    setting.setComparisonType(PairedComparison);
    setting.setPRInterpolationType(AlongFP);
    setting.setFrequencyWeightVar(6);

    const ROCSetting copy = setting;
    setting = ROCSetting();
    EXPECT_EQ(copy.getStateVar(), 2);
    EXPECT_EQ(copy.getValueOfStateVar(), 1.5);
    EXPECT_THAT(copy.getTestVars(), ElementsAre(3, -1, 3));
    EXPECT_EQ(copy.getDistribution(), BiNegativeExponential);
    EXPECT_FALSE(copy.isIncludeCutOff());
    EXPECT_FALSE(copy.isLargerTestMorePositive());
    EXPECT_TRUE(copy.needPR());
    EXPECT_FALSE(copy.needROC());
    EXPECT_EQ(copy.getComparisonType(), PairedComparison);
    EXPECT_EQ(copy.getPRInterpolationType(), AlongFP);
    EXPECT_EQ(copy.getFrequencyWeightVar(), 6);
    EXPECT_EQ(setting.getStateVar(), -1);
}

TEST(Setting, ConfidenceLevelLiesStrictlyBetweenZeroAndOne)
{
    ROCSetting setting;
    setting.setConfidenceLevel(0.99);
    for (const double refused : {0.0, 1.0, -0.5, 95.0, std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(), VexMV::Missing()}) {
        SCOPED_TRACE(refused);
        setting.setConfidenceLevel(refused);
        EXPECT_EQ(setting.getConfidienceLevel(), 0.99);
    }
    setting.setConfidenceLevel(std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(setting.getConfidienceLevel(), std::numeric_limits<double>::denorm_min());
}

TEST(Setting, GroupDefinitionsReplaceEachOtherWhole)
{
    ROCSetting setting;
    setting.setCutOffGroupVar(3, 7.5);
    EXPECT_EQ(setting.getGroupVar(), 3);
    EXPECT_EQ(setting.getGroupType(), CutPointGroup);
    EXPECT_EQ(setting.getGroupCutValue(), 7.5);
    EXPECT_THAT(setting.getGroupSelectValues(), IsEmpty());

    setting.setSelectGroupVar(4, 2.0, 1.0);
    EXPECT_EQ(setting.getGroupVar(), 4);
    EXPECT_EQ(setting.getGroupType(), SelectGroup);
    EXPECT_TRUE(VexMV::IsMissing(setting.getGroupCutValue()));
    EXPECT_THAT(setting.getGroupSelectValues(), ElementsAre(2.0, 1.0)); // as given, not sorted

    setting.setSelectGroupVar(4, 5.0, 5.0);
    EXPECT_THAT(setting.getGroupSelectValues(), ElementsAre(5.0, 5.0));

    setting.setCutOffGroupVar(3, 1.0);
    EXPECT_THAT(setting.getGroupSelectValues(), IsEmpty());

    setting.setMidPointGroupVar(5);
    EXPECT_EQ(setting.getGroupVar(), 5);
    EXPECT_EQ(setting.getGroupType(), MidPointGroup);
    EXPECT_TRUE(VexMV::IsMissing(setting.getGroupCutValue()));
    EXPECT_THAT(setting.getGroupSelectValues(), IsEmpty());
}

TEST(Setting, ForeignValuesReadAsTheSecondOfThePair)
{
    for (const int foreign : {-1, 2, 7}) {
        SCOPED_TRACE(foreign);
        ROCSetting setting;
        setting.setClassification(static_cast<Classification>(foreign));
        setting.setDirection(static_cast<Direction>(foreign));
        EXPECT_FALSE(setting.isIncludeCutOff());
        EXPECT_FALSE(setting.isLargerTestMorePositive());
    }
}

} // namespace
