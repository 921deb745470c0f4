#include "host/VexMV.h"
#include "vexrocproc/ROCSetting.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

using namespace ROCConst_920;
using ROCALG_920::ROCSetting;
using VexCommon_920::VexMV;

TEST(Setting, StartsWithDefaultsThatItsDisplayDoesNotShow)
{
    const ROCSetting setting;
    EXPECT_EQ(setting.getGroupVar(), -1);
    EXPECT_EQ(setting.getGroupType(), NoGroup);
    EXPECT_TRUE(VexMV::IsMissing(setting.getGroupCutValue()));
    EXPECT_TRUE(setting.getGroupSelectValues().empty());
    EXPECT_EQ(setting.getPRInterpolationType(), AlongTP);
    EXPECT_EQ(setting.getFrequencyWeightVar(), -1);
}

TEST(Setting, ConfidenceLevelLiesStrictlyBetweenZeroAndOne)
{
    ROCSetting setting;
    setting.setConfidenceLevel(0.99);
    for (const double refused : {0.0, 1.0, -0.5, 95.0, std::numeric_limits<double>::quiet_NaN()}) {
        SCOPED_TRACE(refused);
        setting.setConfidenceLevel(refused);
        EXPECT_EQ(setting.getConfidienceLevel(), 0.99);
    }
}

TEST(Setting, GroupDefinitionsReplaceEachOtherWhole)
{
    ROCSetting setting;
    const auto expectGroup = [&](int variable, GroupType type, double cut, const std::vector<double>& values) {
        EXPECT_EQ(setting.getGroupVar(), variable);
        EXPECT_EQ(setting.getGroupType(), type);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(setting.getGroupCutValue()), std::bit_cast<std::uint64_t>(cut));
        EXPECT_EQ(setting.getGroupSelectValues(), values);
    };
    setting.setSelectGroupVar(4, 5.0, 5.0);
    setting.setCutOffGroupVar(3, 7.5);
    expectGroup(3, CutPointGroup, 7.5, {});
    setting.setSelectGroupVar(4, 2.0, 1.0);
    expectGroup(4, SelectGroup, VexMV::Missing(), {2.0, 1.0}); // as given, not sorted
    setting.setMidPointGroupVar(5);
    expectGroup(5, MidPointGroup, VexMV::Missing(), {});
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
