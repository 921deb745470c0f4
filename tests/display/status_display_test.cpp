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

/// What DisplayC says of the values from 0 up, until one that it does not know.
template <class Enumeration>
std::string meanings(std::ostringstream& out)
{
    std::string all;
    for (int value = 0; value < 10 && all.find("unrecognized") == std::string::npos; ++value) {
        out.str("");
        DisplayC("it", static_cast<Enumeration>(value));
        all += out.str();
    }
    return all;
}

using EnumerationLines = Lines;

TEST_F(EnumerationLines, SayWhatEveryValueMeans)
{
    const std::string rest = "it = unrecognized\n";
    EXPECT_EQ(meanings<Classification>(out), "it = Include\nit = Exclude\n" + rest);
    EXPECT_EQ(meanings<Distribution>(out),
              "it = Nonparametric Assumption\nit = Bi-negative Exponential Distribution Assumption\n" + rest);
    EXPECT_EQ(meanings<Direction>(out),
              "it = Larger or higher test result indicates more positive test\n"
              "it = Smaller or lower test result indicates more positive test\n"
                  + rest);
    EXPECT_EQ(meanings<PRInterpolation>(out),
              "it = PR interpolate two adjacent points along TP\n"
              "it = PR interpolate two adjacent points along FP\n"
                  + rest);
    EXPECT_EQ(meanings<ComparisonType>(out),
              "it = No comparison\nit = Independent comparison\nit = Paired comparison\n" + rest);
    EXPECT_EQ(meanings<GroupType>(out), "it = No Group\nit = Select\nit = MidPoint\nit = CutPoint\n" + rest);
    EXPECT_EQ(meanings<Operation>(out), "it = Equal\nit = Greater Or Equal\nit = Less\n" + rest);
    out.str("");
    DisplayC("Comparison Type", static_cast<ComparisonType>(-1));
    EXPECT_EQ(out.str(), "Comparison Type = unrecognized\n");
}

using StatusLines = Lines;

TEST_F(StatusLines, TellErrorCodeAndNameAndAreNumberedInAList)
{
    DisplayStatus("run", VexStatus(430002, false));
    DisplayVStatus("all", {VexStatus(430104, true), VexStatus(1, false)});
    DisplayVStatus("none", {});
    EXPECT_EQ(out.str(),
              "run\nIsError true\nerror code 430002\nSetting_Error_StateVar\n"
              "all  size 2\n"
              "\nindex 0\nIsError false\nerror code 430104\nWARN_GROUP_IGNORE\n"
              "\nindex 1\nIsError true\nerror code 1\nUnrecognized error code\n"
              "none  size 0\n");
}

} // namespace
