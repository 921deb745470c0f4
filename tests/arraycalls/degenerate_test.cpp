#include "folders.h"
#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <span>
#include <sstream>
#include <string>

// docs/degenerate-inputs.md is the expectation: every line of its tables is run, and its cells are compared with what
// the calls answer.

namespace {

using namespace roctest;

using Cells = std::vector<std::string>;

/// "| `a` | b |": what stands between the bars, without blanks and code marks around it.
Cells cellsOf(const std::string& line)
{
    constexpr const char* padding = " `";
    Cells cells;
    std::istringstream rest(line.substr(1));
    for (std::string cell; std::getline(rest, cell, '|');) {
        const std::size_t first = std::min(cell.find_first_not_of(padding), cell.size());
        cells.push_back(cell.substr(first, cell.find_last_not_of(padding) + 1 - first));
    }
    return cells;
}

/// The lines of the table below a heading, without its two header lines.
std::vector<Cells> tableBelow(const std::string& heading)
{
    std::ifstream file(std::string(docsFolder) + "/degenerate-inputs.md");
    std::vector<Cells> lines;
    bool isBelow = false;
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("## "))
            isBelow = line == "## " + heading;
        else if (isBelow && line.starts_with("| ")) // "|---" is the second line
            lines.push_back(cellsOf(line));
    EXPECT_GT(lines.size(), 3u) << heading;
    return {lines.begin() + !lines.empty(), lines.end()};
}

double number(const std::string& text)
{
    return text == "missing" ? VexCommon_920::VexMV::Missing() : std::stod(text); // reads nan and inf, too
}

/// A column of an input: "null", "none" or numbers. A null array is one of three cases, as are those beside it.
struct Column {
    explicit Column(const std::string& cell) : isNull(cell == "null"), values(isNull ? 3 : 0)
    {
        std::istringstream words(isNull || cell == "none" ? "" : cell);
        for (std::string word; words >> word;)
            values.push_back(number(word));
    }
    [[nodiscard]] const double* data() const { return isNull ? nullptr : values.data(); }
    [[nodiscard]] int size() const { return static_cast<int>(values.size()); }

    bool isNull;
    std::vector<double> values;
};

/// The page's way to write numbers, the rows of a curve in parentheses.
std::string shown(std::span<const Exact> list, std::size_t width = 0)
{
    std::ostringstream text;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const double value = list[i].value;
        const std::size_t column = width > 0 ? i % width : 1;
        if (width == 4 && column == 3) { // a star instead of a last number
            text << (value != 0.0 ? ")*" : ")");
            continue;
        }
        text << (i > 0 ? " " : "") << (column == 0 ? "(" : "");
        if (std::isnan(value))
            text << (VexCommon_920::VexMV::IsMissing(value) ? "missing" : "NaN");
        else
            text << value;
        text << (width == 3 && column == 2 ? ")" : "");
    }
    return width > 0 && list.empty() ? "no rows" : text.str();
}

TEST(DegenerateInputs, OneTestVariable)
{
    for (const Cells& line : tableBelow("One test variable")) {
        SCOPED_TRACE(line[0]);
        const Column states(line[1]);
        const Column values(line[2]);
        const int n = states.size();
        EXPECT_EQ(shown(taken(roccurve(states.data(), values.data(), n, nullptr, "include", "larger")), 3), line[3]);
        EXPECT_EQ(shown(taken(prcurve(states.data(), values.data(), n, nullptr, "include", "larger", "")), 4), line[4]);
        const auto area = [&](int cases) {
            return shown(
                numbers(auc(states.data(), values.data(), cases, nullptr, "include", "larger", "nonparam", 0.95)));
        };
        EXPECT_EQ(area(n), line[5]);
        EXPECT_EQ(area(-n), n == 0 ? line[5] : "0 0 missing missing missing missing missing"); // no case at all
    }
}

TEST(DegenerateInputs, TwoTestVariablesOfTheSameCases)
{
    for (const Cells& line : tableBelow("Two test variables of the same cases")) {
        SCOPED_TRACE(line[0]);
        const Column states(line[1]);
        const Column first(line[2]);
        const Column second(line[3]);
        const auto compared = [&](int cases) {
            return shown(numbers(auc_pairedcomparison(states.data(), first.data(), second.data(), cases, nullptr,
                                                      "include", "larger", 0.95)));
        };
        EXPECT_EQ(compared(states.size()), line[4] + " " + line[5] + " " + line[6]);
        EXPECT_EQ(compared(-states.size()), compared(0));
    }
}

TEST(DegenerateInputs, TwoAreas)
{
    const auto areaWith = [](const std::string& areaAndError) {
        const Column cells(areaAndError);
        return auc_res{5, 5, cells.values.at(0), cells.values.at(1), 0.5, 0.1, 0.9};
    };
    for (const Cells& line : tableBelow("Two areas")) {
        SCOPED_TRACE(line[0]);
        const auc_res first = areaWith(line[1]);
        const auc_res second = areaWith(line[2]);
        EXPECT_EQ(shown(numbers(auc_comparison(first, second, 0.95))),
                  shown(numbers(first)) + " " + shown(numbers(second)) + " " + line[3]); // both handed through
    }
}

TEST(DegenerateInputs, ConfidenceLevel)
{
    const Sample s{{1, 1, 1, 1, 0, 0, 0, 0}, {2, 3, 3, 5, 1, 2, 3, 4}, {4, 6, 5, 8, 3, 2, 7, 1}};
    const auto withoutBounds = [](auc_comparison_res r) {
        for (double* bound :
             {&r.first.ciLower, &r.first.ciUpper, &r.second.ciLower, &r.second.ciUpper, &r.ciLower, &r.ciUpper})
            *bound = 0.0;
        return numbers(r);
    };
    const auto bounds = [](const auto& record) { return shown(Numbers{{record.ciLower}, {record.ciUpper}}); };
    for (const Cells& line : tableBelow("Confidence level")) {
        SCOPED_TRACE(line[0]);
        const double level = number(line[0]);
        const auc_res area = areaOf(s.states, s.values, {}, level);
        const auc_comparison_res paired = pairedOf(s, {}, level);
        const auc_comparison_res independent = auc_comparison(area, areaOf(s.states, s.others), level);
        EXPECT_EQ(bounds(area), line[1]);
        EXPECT_EQ(bounds(paired), line[2]);
        EXPECT_EQ(bounds(independent), line[3]);
        EXPECT_EQ(withoutBounds(paired), withoutBounds(pairedOf(s))); // everything else is computed
    }
}

} // namespace
