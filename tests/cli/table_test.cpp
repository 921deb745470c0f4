#include "cli/output/TableForms.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <tuple>

namespace vexroc {

namespace {

constexpr std::array columns{
    TableColumn{"test", "test", CellRole::name},      TableColumn{"cases", "cases", CellRole::count, 1},
    TableColumn{"yes", "yes", CellRole::flag, 1},     TableColumn{"area", "area", CellRole::statistic, 2},
    TableColumn{"p_value", "p", CellRole::pValue, 2}, TableColumn{"cut", "cut", CellRole::cutOff, 2},
    TableColumn{"log", "", CellRole::statistic, 2},
};

/// "more" stands where a number cannot be told, nothing where there is no cut-off.
Table example()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double missing = std::numeric_limits<double>::quiet_NaN();
    Table table(columns);
    table.addRow({"\"a\"", 1000000.0, 1.0, 0.1 + 0.2, 0.00009, CutOffCell{18.000000000000004, {}}, -4.0});
    table.addRow({"größe, \"x\"\n", 2.0, 0.0, -1e-7, 0.05, CutOffCell{infinity, {}}, 0.0});
    table.addRow({"", "more", missing, missing, 1.0, CutOffCell{missing, {}}, 0.0});
    return table;
}

std::string inLinesOf(std::size_t width, const Table& table)
{
    std::string text;
    writeText(table, width, text);
    return text;
}

} // namespace

TEST(Table, CsvIsExactAndQuotesWhatNeedsIt)
{
    std::string text;
    writeCsv(example(), text);
    EXPECT_EQ(text,
              "test,cases,yes,area,p_value,cut,log\n"
              "\"\"\"a\"\"\",1000000,1,0.30000000000000004,9e-05,18.000000000000004,-4\n"
              "\"größe, \"\"x\"\"\n\",2,0,-1e-07,0.05,inf,0\n"
              "\"\",more,NA,NA,1,,0\n");
}

TEST(Table, TextIsRoundedAlignedAndSetInAsManyPanelsAsTheWidthNeeds)
{
    EXPECT_EQ(inLinesOf(49, example()),
              "test            cases  yes\n"
              "\"a\"           1000000  yes\n"
              "größe, \"x\"\\n        2   no\n"
              "                 more   NA\n"
              "\n"
              "test              area        p  cut\n"
              "\"a\"             0.3000  <0.0001   18\n"
              "größe, \"x\"\\n  -1.0e-07   0.0500  inf\n"
              "                    NA   1.0000\n");
    const std::string wide = inLinesOf(50, example());
    EXPECT_EQ(wide.substr(0, wide.find('\n')), "test            cases  yes      area        p  cut");
}

TEST(Table, LongNamesKeepTheirEndsAndStayDifferent)
{
    Table table(std::array{TableColumn{"test", "test", CellRole::name}, TableColumn{"n", "n", CellRole::count}});
    for (const char* const name :
         {"a long name of a test, once", "a long text of a test, once", "年齢年齢年齢年齢年齢年齢年齢"})
        table.addRow({name, 1.0});
    EXPECT_EQ(inLinesOf(25, table),
              "test           n\n"
              "a long…, once  1\n"
              "a lon…2… once  1\n"
              "年齢年…齢年齢  1\n");
}

TEST(Table, CutOffsReadAsWhatTheyDo)
{
    using Calls = CutOffReading::Calls;
    EXPECT_EQ(cutOffText(3.5, {}), "3.5");
    EXPECT_EQ(cutOffText(-1.0, {.positive = Calls::all, .wholeNumbers = true}), "any");
    EXPECT_EQ(cutOffText(9.0, {.positive = Calls::none}), "none");
    for (const auto& [cutOff, larger, equal, text] : {std::tuple{3.5, true, true, "at least 4"},
                                                      {3.5, true, false, "at least 4"},
                                                      {3.5, false, true, "at most 3"},
                                                      {3.0, true, true, "at least 3"},
                                                      {3.0, true, false, "at least 4"},
                                                      {3.0, false, true, "at most 3"},
                                                      {3.0, false, false, "at most 2"}})
        EXPECT_NE(cutOffText(cutOff, {Calls::some, larger, equal, true}).find(text), std::string::npos) << text;
}

TEST(Table, TextIsAsWideAsATerminalShowsIt)
{
    EXPECT_EQ(displayWidth("Größe €😀"), 9u);
    EXPECT_EQ(displayWidth("年齢 e\u0301"), 6u);
}

} // namespace vexroc
