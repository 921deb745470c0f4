#include "folders.h"
#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

// docs/degenerate-inputs.md is the expectation: every line of its tables is run, and its cells are compared with what
// the calls answer.

namespace {

using namespace roctest;

using Cells = std::vector<std::string>;

std::string trimmed(const std::string& text)
{
    const auto isPadding = [](char c) { return c == ' ' || c == '`'; };
    const auto first = std::find_if_not(text.begin(), text.end(), isPadding);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isPadding).base();
    return {first, last};
}

/// The lines of the table below a heading, without its two header lines.
std::vector<Cells> tableBelow(const std::string& heading)
{
    std::ifstream file(std::string(docsFolder) + "/degenerate-inputs.md");
    std::string line;
    while (std::getline(file, line) && line != "## " + heading) {
    }
    std::vector<Cells> lines;
    while (std::getline(file, line) && line.substr(0, 3) != "## ") {
        if (line.empty() || line.front() != '|')
            continue;
        std::istringstream cells(line.substr(1));
        lines.emplace_back();
        for (std::string cell; std::getline(cells, cell, '|');)
            lines.back().push_back(trimmed(cell));
    }
    EXPECT_GT(lines.size(), 3u) << heading;
    return {lines.begin() + std::min<std::ptrdiff_t>(2, std::ssize(lines)), lines.end()};
}

double number(const std::string& text)
{
    return text == "missing" ? VexCommon_920::VexMV::Missing() : std::stod(text); // reads nan and inf, too
}

/// A column of an input: "null", "none" or numbers.
struct Column {
    explicit Column(const std::string& cell) : isNull(cell == "null")
    {
        std::istringstream words(isNull || cell == "none" ? "" : cell);
        for (std::string word; words >> word;)
            values.push_back(number(word));
    }
    [[nodiscard]] const double* data() const { return isNull ? nullptr : values.data(); }

    bool isNull;
    std::vector<double> values;
};

/// Number of cases to announce for columns: null columns are as long as the others, or else as three cases.
int countOf(std::initializer_list<const Column*> columns)
{
    for (const Column* column : columns)
        if (!column->isNull)
            return static_cast<int>(column->values.size());
    return 3;
}

std::string shown(double value)
{
    if (VexCommon_920::VexMV::IsMissing(value))
        return "missing";
    if (std::isnan(value))
        return "NaN";
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

std::string shown(std::initializer_list<double> values)
{
    std::string text;
    for (const double value : values) {
        text += text.empty() ? "" : " ";
        text += shown(value);
    }
    return text;
}

std::string shown(const auc_res& r)
{
    return shown({r.posCount, r.negCount, r.area, r.stdError, r.asymptoticSig, r.ciLower, r.ciUpper});
}

std::string shownDifference(const auc_comparison_res& r)
{
    return shown({r.z, r.zSig, r.areaDiff, r.stdErrorDiff, r.ciLower, r.ciUpper});
}

/// Rows in parentheses; row(i) is what follows the opening one.
template <class Result, class Row>
std::string shownRows(const Result& res, Row row)
{
    if (res.rows == nullptr)
        return "null rows";
    std::string text;
    for (int i = 0; i < res.count; ++i) {
        text += text.empty() ? "(" : " (";
        text += row(i);
    }
    return text.empty() ? "no rows" : text;
}

std::string shownCurve(const Column& states, const Column& values)
{
    const roccurve_res res =
        roccurve(states.data(), values.data(), countOf({&states, &values}), nullptr, "include", "larger");
    const std::string text = shownRows(res, [&](int i) {
        return shown({res.rows[3 * i], res.rows[3 * i + 1], res.rows[3 * i + 2]}) + ")";
    });
    release_roccurve_res(res);
    return text;
}

std::string shownPoints(const Column& states, const Column& values)
{
    const prcurve_res res = prcurve(states.data(), values.data(), countOf({&states, &values}), nullptr, "include",
                                    "larger", "davis-goadrich");
    const std::string text = shownRows(res, [&](int i) {
        const prcurve_row& row = res.rows[i];
        return shown({row.cutOff, row.recall, row.precision}) + (row.interpolated != 0 ? ")*" : ")");
    });
    release_prcurve_res(res);
    return text;
}

TEST(DegenerateInputs, OneTestVariable)
{
    for (const Cells& line : tableBelow("One test variable")) {
        SCOPED_TRACE(line[0]);
        const Column states(line[1]);
        const Column values(line[2]);
        EXPECT_EQ(shownCurve(states, values), line[3]);
        EXPECT_EQ(shownPoints(states, values), line[4]);
        const int n = countOf({&states, &values});
        EXPECT_EQ(shown(auc(states.data(), values.data(), n, nullptr, "include", "larger", "nonparam", 0.95)), line[5]);
        // A negative number of cases is no case at all.
        EXPECT_EQ(shown(auc(states.data(), values.data(), -n, nullptr, "include", "larger", "nonparam", 0.95)),
                  n == 0 ? line[5] : "0 0 missing missing missing missing missing");
    }
}

TEST(DegenerateInputs, TwoTestVariablesOfTheSameCases)
{
    for (const Cells& line : tableBelow("Two test variables of the same cases")) {
        SCOPED_TRACE(line[0]);
        const Column states(line[1]);
        const Column first(line[2]);
        const Column second(line[3]);
        const auc_comparison_res res =
            auc_pairedcomparison(states.data(), first.data(), second.data(), countOf({&states, &first, &second}),
                                 nullptr, "include", "larger", 0.95);
        EXPECT_EQ(shown(res.first), line[4]);
        EXPECT_EQ(shown(res.second), line[5]);
        EXPECT_EQ(shownDifference(res), line[6]);
    }
}

TEST(DegenerateInputs, TwoAreas)
{
    const auto areaWith = [](const std::string& areaAndError) {
        const Column cells(areaAndError);
        auc_res record{5, 5, cells.values.at(0), cells.values.at(1), 0.5, 0.1, 0.9};
        return record;
    };
    for (const Cells& line : tableBelow("Two areas")) {
        SCOPED_TRACE(line[0]);
        const auc_comparison_res res = auc_comparison(areaWith(line[1]), areaWith(line[2]), 0.95);
        EXPECT_EQ(shownDifference(res), line[3]);
        EXPECT_EQ(numbers(res.first), numbers(areaWith(line[1]))); // handed through
        EXPECT_EQ(numbers(res.second), numbers(areaWith(line[2])));
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
    for (const Cells& line : tableBelow("Confidence level")) {
        SCOPED_TRACE(line[0]);
        const double level = number(line[0]);
        const auc_res area = areaOf(s.states, s.values, {}, level);
        const auc_comparison_res paired = pairedOf(s, {}, level);
        const auc_comparison_res independent = auc_comparison(area, areaOf(s.states, s.others), level);
        EXPECT_EQ(shown({area.ciLower, area.ciUpper}), line[1]);
        EXPECT_EQ(shown({paired.ciLower, paired.ciUpper}), line[2]);
        EXPECT_EQ(shown({independent.ciLower, independent.ciUpper}), line[3]);
        EXPECT_EQ(withoutBounds(paired), withoutBounds(pairedOf(s))); // everything else is computed
    }
}

} // namespace
