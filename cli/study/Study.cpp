#include "cli/study/Study.h"

#include "cli/study/CaseColumns.h"
#include "cli/study/RowsByValue.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vexroc {

namespace {

/// The progress of one of several runs as that of all.
Watch oneOf(const Watch& watch, std::size_t done, std::size_t all)
{
    Watch part = watch;
    if (watch.progress)
        part.progress = [&watch, done, all](double share, int records) {
            watch.progress((static_cast<double>(done) + share) / static_cast<double>(all), records);
        };
    return part;
}

RunCases casesOf(const CaseColumns& columns, std::vector<std::string> tests)
{
    RunCases cases{.state = columns.state(),
                   .group = columns.group(),
                   .weight = columns.weight(),
                   .count = columns.count(),
                   .groupWords = columns.groupWords(),
                   .tests = std::move(tests)};
    for (const std::string& test : cases.tests)
        cases.values.push_back(columns.test(test));
    return cases;
}

/// Of the rows with one value.
Watch ofValue(Watch watch, const std::string& column, const std::string& value)
{
    watch.prefix = column + " = " + value + ": ";
    return watch;
}

/// The result of a test that is alone in a run. What a whole analysis calls no result is one without an area then.
TestResult resultOf(const RunCases& cases, const Question& question, const Watch& watch)
{
    return std::move(run(cases, question, Comparison::none, watch).tests.front());
}

/// Every test as if it were the only one.
Results eachArea(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    if (!question.points) // none holds a curve
        return run(casesOf(columns, question.tests), question, Comparison::none, watch);
    Results all;
    for (std::size_t t = 0; t < question.tests.size(); ++t)
        all.tests.push_back(
            resultOf(casesOf(columns, {question.tests[t]}), question, oneOf(watch, t, question.tests.size())));
    return all;
}

/// The cases with which an analysis without a result would have told the area of a test.
Area casesOf(const CaseColumns& columns, const std::string& test, auto&& takesPart)
{
    Area cases{.test = test};
    const std::span<const double> counts = columns.count();
    for (std::size_t row = 0; row < columns.rows(); ++row) {
        const double state = columns.state()[row];
        if (std::isnan(columns.test(test)[row]) || !takesPart(row))
            continue;
        const double count = counts.empty() ? 1.0 : counts[row];
        cases.positive += state == CaseColumns::positiveState && count > 0 ? static_cast<long long>(count) : 0;
        cases.negative += state == CaseColumns::negativeState && count > 0 ? static_cast<long long>(count) : 0;
    }
    return cases;
}

/// Each test between the groups, which are groups of words. Without a result, the tests still tell their cases.
Results eachDifference(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    Results all = run(casesOf(columns, question.tests), question, Comparison::independent, watch);
    if (!all.failure)
        return all;
    const auto ofGroup = [&](const std::string& test, std::size_t group) {
        const double code = group == 0 ? CaseColumns::firstGroup : CaseColumns::secondGroup;
        Area cases = casesOf(columns, test, [&](std::size_t row) { return columns.group()[row] == code; }); // exact
        cases.group = question.grouping->column + " = "
            + (columns.groupWords().empty() ? shortest(code) : columns.groupWords()[group]);
        return cases;
    };
    for (const std::string& test : question.tests) {
        Difference difference{
            .first = ofGroup(test, 0), .second = ofGroup(test, 1), .error = question.errorOfDifferences()};
        difference.leftOut = all.rows.read - all.rows.otherGroup - difference.first.positive - difference.first.negative
            - difference.second.positive - difference.second.negative;
        all.differences.push_back(std::move(difference));
    }
    return all;
}

/// Every two tests on the same cases. Without a result, the pairs still tell their cases.
Results eachPair(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    Results all = run(casesOf(columns, question.tests), question, Comparison::paired, watch);
    const std::vector<std::string>& tests = question.tests;
    for (std::size_t first = 0; all.failure && first < tests.size(); ++first)
        for (std::size_t second = first + 1; second < tests.size(); ++second) {
            const auto isKnown = [other = columns.test(tests[second])](std::size_t row) {
                return !std::isnan(other[row]);
            };
            const Area cases = casesOf(columns, tests[first], isKnown);
            Difference difference{.first = cases, .second = cases, .error = question.errorOfDifferences()};
            difference.second.test = tests[second];
            difference.leftOut = all.rows.read - difference.first.positive - difference.first.negative;
            all.differences.push_back(std::move(difference));
        }
    return all;
}

/// What is not known comes last.
bool largerFirst(double a, double b) { return std::isnan(b) ? !std::isnan(a) : a > b; }

bool isWholeOrMissing(double value) { return std::isnan(value) || value == std::trunc(value); }

/// Counts are whole numbers from 0.
void checkCounts(const DataTable& table, const Question& question)
{
    if (question.count.empty())
        return;
    const std::span<const double> counts = table.numbers(question.count);
    const auto isBad = [](double count) { return count < 0 || !isWholeOrMissing(count); };
    const auto bad = std::ranges::find_if(counts, isBad);
    if (bad != counts.end())
        throw inputError(table.source + ", column " + inQuotes(question.count) + ", data row "
                         + std::to_string(bad - counts.begin() + 1) + ": " + inQuotes(shortest(*bad))
                         + " is no count; --count takes whole numbers from 0");
}

Results studyCases(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    if (!question.eachTest)
        return run(casesOf(columns, question.tests), question, question.comparison, watch);
    switch (question.comparison) {
    case Comparison::independent: return eachDifference(columns, question, watch);
    case Comparison::paired: return eachPair(columns, question, watch);
    case Comparison::none: break;
    }
    return eachArea(columns, question, watch);
}

Results study(const DataTable& table, const CaseLabels& labels, const Question& question, const Watch& watch)
{
    const CaseColumns columns(table, labels, question);
    Results results = studyCases(columns, question, watch);
    for (TestResult& test : results.tests) {
        Area& area = test.area;
        area.reading = {.largerIsPositive = area.largerIsPositive,
                        .equalIsPositive = question.equalIsPositive,
                        .wholeNumbers = std::ranges::all_of(columns.test(area.test), isWholeOrMissing)};
    }
    if (question.byArea)
        std::ranges::stable_sort(results.tests, largerFirst, [](const TestResult& test) { return test.area.area; });
    return results;
}

} // namespace

CutOffReading TestResult::readingOf(const CutOff& cutOff) const
{
    CutOffReading reading = area.reading;
    reading.positive = callsOf(cutOff, area.positive, area.negative);
    return reading;
}

CutOffReading::Calls callsOf(const CutOff& cutOff, long long positive, long long negative)
{
    if (cutOff.truePositive == positive && cutOff.falsePositive == negative)
        return CutOffReading::Calls::all;
    return cutOff.truePositive + cutOff.falsePositive == 0 ? CutOffReading::Calls::none : CutOffReading::Calls::some;
}

Results study(const DataTable& table, const Question& question, const Watch& watch)
{
    checkCounts(table, question);
    const auto labels = std::make_shared<const CaseLabels>(table, question);
    Results results = study(table, *labels, question, watch);
    results.labels = labels;
    return results;
}

StudyByValue studyByValue(DataTable table, const Question& question, const Watch& watch)
{
    checkCounts(table, question);
    const auto labels = std::make_shared<const CaseLabels>(table, question);
    const RowsByValue rows(std::move(table), *labels->by());
    StudyByValue all{.missing = rows.missing(), .labels = labels};
    for (std::size_t v = 0; v < rows.values().size(); ++v) {
        const std::string& value = rows.values()[v];
        const Watch part = ofValue(oneOf(watch, v, rows.values().size()), question.by, value);
        all.values.push_back({value, study(rows.rowsOf(v), *labels, question, part)});
    }
    return all;
}

} // namespace vexroc
