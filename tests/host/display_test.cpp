#include "host/VexDisplay.h"
#include "host/VexMV.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>
#include <thread>

namespace {

using namespace VexDisplay_920;

TEST(Display, WritesOneLinePerCallAndNothingWithoutAStreamOfItsOwnThread)
{
    std::ostringstream out;
    DisplayText(1, "lost");
    SetOutStream(out);
    std::thread([] { EXPECT_EQ(GetOutStream(), nullptr); }).join();
    EXPECT_EQ(GetOutStream(), &out);
    DisplayText(7, std::string("a text"));
    DisplayText(1, "");
    DisplayB("yes", true);
    DisplayB("Need PR points:", false);
    DisplayD("third", 1.0 / 3.0);
    DisplayD("missing", VexCommon_920::VexMV::Missing());
    DisplayDV("flagged", {0.5, 1e10, -2.0}, true);
    DisplayIV("Test Variables", {4, 7});
    DisplayIV("none", {});
    ClearOutStream();
    DisplayI("lost", 1);
    EXPECT_EQ(out.str(),
              "a text\n\nyes true\nNeed PR points: false\nthird 0.333333\nmissing nan\n"
              "flagged [0.5,1e+10,-2]\nTest Variables [4,7]\nnone []\n");
}

TEST(Display, IgnoresTheFormattingOfTheStream)
{
    struct DecimalComma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    std::ostringstream out; // takes the global locale
    out << std::hex << std::fixed << std::showpos << std::setprecision(1) << std::setfill('*') << std::setw(30);
    SetOutStream(out);
    DisplayI("count", 10000);
    DisplayDV("cuts", {0.125, 1000.5}, false);
    std::locale::global(before);
    ClearOutStream();
    EXPECT_EQ(out.str(), "count 10000\ncuts [0.125,1000.5]\n");
}

} // namespace
