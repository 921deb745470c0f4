#include "cli/study/Study.h"

#include "cli/study/CaseColumns.h"
#include "cli/study/RowsByValue.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"
#include "vexrocproc/analysis.h"
#include "vexrocproc/arraycalls.h"

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

Difference differenceOf(const auc_comparison_res& r, const Area& first, const Area& second)
{
    Difference difference{.first = first,
                          .second = second,
                          .leftOut = first.leftOut + second.leftOut,
                          .difference = r.areaDiff,
                          .stdError = r.stdErrorDiff,
                          .z = r.z,
                          .lower = r.ciLower,
                          .upper = r.ciUpper};
    difference.pValue = vexroc_two_sided_p(r.z, &difference.log10P);
    return difference;
}

/// As much of an area as its comparison takes.
auc_res asCall(const Area& area)
{
    auc_res call{};
    call.area = area.area;
    call.stdError = area.stdError;
    return call;
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

/// The area of a test in one of the two groups of words.
Area areaOfGroup(const CaseColumns& columns, const Question& question, const std::string& test, std::size_t group,
                 const Watch& watch)
{
    const double code = group == 0 ? CaseColumns::firstGroup : CaseColumns::secondGroup;
    const auto ofGroup = [&](std::span<const double> column) {
        std::vector<double> kept;
        for (std::size_t row = 0; row < column.size(); ++row)
            if (columns.group()[row] == code) // exact
                kept.push_back(column[row]);
        return kept;
    };
    const std::vector<double> states = ofGroup(columns.state());
    const std::vector<double> counts = ofGroup(columns.count());
    const std::vector<double> values = ofGroup(columns.test(test));
    Question ungrouped = question;
    ungrouped.grouping.reset();
    const RunCases cases{.state = states, .count = counts, .tests = {test}, .values = {values}};
    Watch silent = watch; // the run knows nothing of groups
    silent.remarks = nullptr;
    Area area = resultOf(cases, ungrouped, silent).area;
    area.group = question.grouping->column + " = "
        + (columns.groupWords().empty() ? shortest(code) : columns.groupWords()[group]);
    return area;
}

/// The cases of the rows with such a code of the group.
long long casesWhere(const CaseColumns& columns, auto&& holds)
{
    long long cases = 0;
    for (std::size_t row = 0; row < columns.rows(); ++row)
        if (holds(columns.group()[row]))
            cases += columns.count().empty() || std::isnan(columns.count()[row])
                ? 1
                : static_cast<long long>(columns.count()[row]);
    return cases;
}

/// Each test between the groups, which are groups of words.
Results eachDifference(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    Results all;
    all.rows.otherGroup = casesWhere(columns, [](double code) { return code == CaseColumns::otherGroup; });
    all.rows.missingGroup = casesWhere(columns, [](double code) { return std::isnan(code); });
    const std::size_t steps = 2 * question.tests.size();
    for (std::size_t step = 0; step < steps; step += 2) {
        const std::string& test = question.tests[step / 2];
        const Area first = areaOfGroup(columns, question, test, 0, oneOf(watch, step, steps));
        const Area second = areaOfGroup(columns, question, test, 1, oneOf(watch, step + 1, steps));
        all.differences.push_back(
            differenceOf(auc_comparison(asCall(first), asCall(second), question.level), first, second));
        all.differences.back().leftOut += all.rows.missingGroup;
    }
    return all;
}

/// The cases that a pair would have had in an analysis without a result.
Area casesOfPair(const CaseColumns& columns, const std::string& test, const std::string& other)
{
    Area cases{.test = test};
    const std::span<const double> counts = columns.count();
    for (std::size_t row = 0; row < columns.rows(); ++row) {
        const double state = columns.state()[row];
        if (std::isnan(columns.test(test)[row]) || std::isnan(columns.test(other)[row]))
            continue;
        const double count = counts.empty() ? 1.0 : counts[row];
        cases.positive += state == CaseColumns::positiveState && count > 0 ? static_cast<long long>(count) : 0;
        cases.negative += state == CaseColumns::negativeState && count > 0 ? static_cast<long long>(count) : 0;
    }
    return cases;
}

/// Every two tests on the same cases. Without a result, the pairs still tell their cases.
Results eachPair(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    Results all = run(casesOf(columns, question.tests), question, Comparison::paired, watch);
    const std::vector<std::string>& tests = question.tests;
    for (std::size_t first = 0; all.failure && first < tests.size(); ++first)
        for (std::size_t second = first + 1; second < tests.size(); ++second) {
            Difference difference{.first = casesOfPair(columns, tests[first], tests[second]),
                                  .second = casesOfPair(columns, tests[second], tests[first])};
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
    for (auto& [area, roc, precisionRecall, best] : results.tests)
        area.reading = {.largerIsPositive = area.largerIsPositive,
                        .equalIsPositive = question.equalIsPositive,
                        .wholeNumbers = std::ranges::all_of(columns.test(area.test), isWholeOrMissing)};
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
