#include "host/VexDisplay.h"
#include "vexrocproc/ROCComponentDisplay.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using namespace ROCConst_920;
using namespace ROCComponentDisplay;
using VexCommon_920::VexStatus;

template <class Action>
std::string linesOf(Action action)
{
    std::ostringstream out;
    VexDisplay_920::SetOutStream(out);
    action();
    VexDisplay_920::ClearOutStream();
    return out.str();
}

/// Value by value, what DisplayC says of those that it knows.
template <class Enumeration>
std::string meanings()
{
    std::string all;
    for (int value = -1; value < 10; ++value) {
        const std::string label = std::to_string(value);
        const std::string line = linesOf([&] { DisplayC(label, static_cast<Enumeration>(value)); });
        all += line != label + " = unrecognized\n" ? line : "";
    }
    return all;
}

TEST(EnumerationLines, SayWhatEveryValueMeans)
{
    EXPECT_EQ(meanings<Classification>(), "0 = Include\n1 = Exclude\n");
    EXPECT_EQ(meanings<Distribution>(),
              "0 = Nonparametric Assumption\n1 = Bi-negative Exponential Distribution Assumption\n");
    EXPECT_EQ(meanings<Direction>(),
              "0 = Larger or higher test result indicates more positive test\n"
              "1 = Smaller or lower test result indicates more positive test\n");
    EXPECT_EQ(meanings<PRInterpolation>(),
              "0 = PR interpolate two adjacent points along TP\n1 = PR interpolate two adjacent points along FP\n");
    EXPECT_EQ(meanings<ComparisonType>(), "0 = No comparison\n1 = Independent comparison\n2 = Paired comparison\n");
    EXPECT_EQ(meanings<GroupType>(), "0 = No Group\n1 = Select\n2 = MidPoint\n3 = CutPoint\n");
    EXPECT_EQ(meanings<Operation>(), "0 = Equal\n1 = Greater Or Equal\n2 = Less\n");
}

TEST(StatusLines, TellErrorCodeAndNameAndAreNumberedInAList)
{
    const std::string lines = linesOf([] {
        DisplayStatus("run", VexStatus(430002, false));
        DisplayVStatus("all", {VexStatus(430104, true), VexStatus(1, false)});
        DisplayVStatus("none", {});
    });
    EXPECT_EQ(lines,
              "run\nIsError true\nerror code 430002\nSetting_Error_StateVar\n"
              "all  size 2\n"
              "\nindex 0\nIsError false\nerror code 430104\nWARN_GROUP_IGNORE\n"
              "\nindex 1\nIsError true\nerror code 1\nUnrecognized error code\n"
              "none  size 0\n");
}

} // namespace
