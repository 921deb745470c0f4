#include "host/VexDisplay.h"
#include "vexrocproc/ROCComponentDisplay.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using namespace ROCConst_920;
using namespace ROCComponentDisplay;
using VexCommon_920::VexStatus;

class Lines : public testing::Test {
protected:
    Lines() { VexDisplay_920::SetOutStream(out); }
    ~Lines() override { VexDisplay_920::ClearOutStream(); }

    std::ostringstream out;
};

/// What DisplayC writes for the values from 0 up.
template <class Enumeration>
std::string linesUpTo(int last, std::ostringstream& out)
{
    out.str("");
    for (int value = 0; value <= last; ++value)
        DisplayC("it", static_cast<Enumeration>(value));
    return out.str();
}

using EnumerationLines = Lines;

TEST_F(EnumerationLines, SayWhatEveryValueMeans)
{
    EXPECT_EQ(linesUpTo<Classification>(3, out), "it = Include\n"
                                                 "it = Exclude\n"
                                                 "it = unrecognized\n"
                                                 "it = unrecognized\n");
    EXPECT_EQ(linesUpTo<Distribution>(2, out), "it = Nonparametric Assumption\n"
                                               "it = Bi-negative Exponential Distribution Assumption\n"
                                               "it = unrecognized\n");
    EXPECT_EQ(linesUpTo<Direction>(2, out), "it = Larger or higher test result indicates more positive test\n"
                                            "it = Smaller or lower test result indicates more positive test\n"
                                            "it = unrecognized\n");
    EXPECT_EQ(linesUpTo<PRInterpolation>(2, out), "it = PR interpolate two adjacent points along TP\n"
                                                  "it = PR interpolate two adjacent points along FP\n"
                                                  "it = unrecognized\n");
    EXPECT_EQ(linesUpTo<ComparisonType>(3, out), "it = No comparison\n"
                                                 "it = Independent comparison\n"
                                                 "it = Paired comparison\n"
                                                 "it = unrecognized\n");
    EXPECT_EQ(linesUpTo<GroupType>(4, out), "it = No Group\n"
                                            "it = Select\n"
                                            "it = MidPoint\n"
                                            "it = CutPoint\n"
                                            "it = unrecognized\n");
    EXPECT_EQ(linesUpTo<Operation>(3, out), "it = Equal\n"
                                            "it = Greater Or Equal\n"
                                            "it = Less\n"
                                            "it = unrecognized\n");
}

TEST_F(EnumerationLines, TakeAnyNumberAndAnyLabel)
{
    DisplayC("", Include);
    for (const int foreign : {7, -1})
        DisplayC("Comparison Type", static_cast<ComparisonType>(foreign));
    EXPECT_EQ(out.str(), " = Include\nComparison Type = unrecognized\nComparison Type = unrecognized\n");
}

using StatusLines = Lines;

TEST_F(StatusLines, TellErrorCodeAndName)
{
    DisplayStatus("run", VexStatus(430002, false));
    DisplayStatus("warned", VexStatus(430104, true));
    EXPECT_EQ(out.str(), "run\n"
                         "IsError true\n"
                         "error code 430002\n"
                         "Setting_Error_StateVar\n"
                         "warned\n"
                         "IsError false\n"
                         "error code 430104\n"
                         "WARN_GROUP_IGNORE\n");
}

TEST_F(StatusLines, OfAListAreNumberedFromZero)
{
    DisplayVStatus("all", {VexStatus(), VexStatus(1, false)});
    DisplayVStatus("none", {});
    EXPECT_EQ(out.str(), "all  size 2\n"
                         "\n"
                         "index 0\n"
                         "IsError false\n"
                         "error code 0\n"
                         "No error\n"
                         "\n"
                         "index 1\n"
                         "IsError true\n"
                         "error code 1\n"
                         "Unrecognized error code\n"
                         "none  size 0\n");
}

} // namespace
