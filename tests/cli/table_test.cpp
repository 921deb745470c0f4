#include "cli/output/TableForms.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace vexroc {

namespace {

constexpr std::array columns{
    TableColumn{"test", "test", CellRole::name},          TableColumn{"cases", "cases", CellRole::count, 1},
    TableColumn{"yes", "yes", CellRole::flag, 1},         TableColumn{"area", "area", CellRole::statistic, 2},
    TableColumn{"sig", "sig", CellRole::pValue, 2}, TableColumn{"cut", "cut", CellRole::measure, 2},
};

/// The same table in one form: "more" stands where a number cannot be told.
std::string spelledBy(void (*write)(const Table&, std::string&))
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double missing = std::numeric_limits<double>::quiet_NaN();
    Table table(columns);
    table.addRow({"\"a\"", 1000000.0, 1.0, 0.1 + 0.2, 0.00009, 18.000000000000004});
    table.addRow({"größe, \"x\"\n", 2.0, 0.0, -1e-7, 0.05, infinity});
    table.addRow({"", "more", missing, missing, 1.0, -0.0});
    std::string text;
    write(table, text);
    return text;
}

} // namespace

TEST(Table, CsvIsExactAndQuotesWhatNeedsIt)
{
    EXPECT_EQ(spelledBy(writeCsv),
              "test,cases,yes,area,sig,cut\n"
              "\"\"\"a\"\"\",1000000,1,0.30000000000000004,9e-05,18.000000000000004\n"
              "\"größe, \"\"x\"\"\n\",2,0,-1e-07,0.05,inf\n"
              "\"\",more,NA,NA,1,-0\n");
}

TEST(Table, TextIsRoundedAlignedAndSetInPanels)
{
    EXPECT_EQ(spelledBy(writeText),
              "test            cases  yes\n"
              "\"a\"           1000000  yes\n"
              "größe, \"x\"\\n        2   no\n"
              "                 more   NA\n"
              "\n"
              "test              area      sig  cut\n"
              "\"a\"             0.3000  <0.0001   18\n"
              "größe, \"x\"\\n  -1.0e-07   0.0500  inf\n"
              "                    NA   1.0000   -0\n");
}

TEST(Table, TextIsAsWideAsATerminalShowsIt)
{
    EXPECT_EQ(displayWidth("Größe €😀"), 9u);
    EXPECT_EQ(displayWidth("年齢 e\u0301"), 6u);
}

} // namespace vexroc
