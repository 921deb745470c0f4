#include "cli/study/Study.h"

#include "cli/study/CaseColumns.h"
#include "cli/study/RowsByValue.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "vexrocproc/arraycalls.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <map>
#include <optional>
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
                   .groupWords = columns.groupWords(),
                   .tests = std::move(tests)};
    for (const std::string& test : cases.tests)
        cases.values.push_back(columns.test(test));
    return cases;
}

/// The result of a test that is alone in a run. What a whole analysis calls no result is one without an area then.
TestResult resultOf(const RunCases& cases, const Question& question, const Watch& watch)
{
    return std::move(run(cases, question, Comparison::none, watch).tests.front());
}

Difference differenceOf(const auc_comparison_res& r, const Area& first, const Area& second)
{
    return {.first = first,
            .second = second,
            .difference = r.areaDiff,
            .stdError = r.stdErrorDiff,
            .z = r.z,
            .significance = r.zSig,
            .lower = r.ciLower,
            .upper = r.ciUpper};
}

auc_res asCall(const Area& area)
{
    return {.posCount = static_cast<double>(area.positive),
            .negCount = static_cast<double>(area.negative),
            .area = area.area,
            .stdError = area.stdError,
            .asymptoticSig = area.significance,
            .ciLower = area.lower,
            .ciUpper = area.upper};
}

/// Every test as if it were the only one.
Results eachArea(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    if (!question.biNegative && !question.points) // no test changes what another gets, and none holds a curve
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
    const std::span<const double> values = columns.test(test);
    std::vector<double> states;
    std::vector<double> ofGroup;
    for (std::size_t row = 0; row < columns.rows(); ++row)
        if (columns.group()[row] == code) { // exact
            states.push_back(columns.state()[row]);
            ofGroup.push_back(values[row]);
        }
    Question ungrouped = question;
    ungrouped.grouping.reset();
    const RunCases cases{.state = states, .tests = {test}, .values = {ofGroup}};
    Area area = resultOf(cases, ungrouped, watch).area;
    area.group = question.grouping->column + " = "
        + (columns.groupWords().empty() ? shortest(code) : columns.groupWords()[group]);
    return area;
}

/// Each test between the groups, which are groups of words.
Results eachDifference(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    Results all;
    all.rows.otherGroup = std::ranges::count(columns.group(), CaseColumns::otherGroup);
    all.rows.missingGroup = std::ranges::count_if(columns.group(), [](double code) { return std::isnan(code); });
    const std::size_t steps = 2 * question.tests.size();
    for (std::size_t step = 0; step < steps; step += 2) {
        const std::string& test = question.tests[step / 2];
        const Area first = areaOfGroup(columns, question, test, 0, oneOf(watch, step, steps));
        const Area second = areaOfGroup(columns, question, test, 1, oneOf(watch, step + 1, steps));
        all.differences.push_back(
            differenceOf(auc_comparison(asCall(first), asCall(second), question.level), first, second));
        all.differences.back().leftOut = first.leftOut + second.leftOut + all.rows.missingGroup;
    }
    return all;
}

/// Every two tests on the cases in which both are known. Tests with the same gaps make one run, which orders each of
/// them once; every other two make a call.
class Pairwise {
public:
    Pairwise(const CaseColumns& columns, const Question& question, const Watch& watch)
        : rows_(columns.rows()), question_(question), watch_(watch), knownStates_(columns, question.tests)
    {
    }

    Results results()
    {
        std::map<std::vector<std::size_t>, std::vector<std::size_t>> testsOf; // by their gaps
        for (std::size_t t = 0; t < tests(); ++t)
            testsOf[gapsOf(t)].push_back(t);
        differences_.resize(tests() * (tests() - 1) / 2);
        for (const auto& [gaps, which] : testsOf)
            if (which.size() > 1)
                compareInOneRun(which);
        for (std::size_t first = 0; first < tests(); ++first)
            for (std::size_t second = first + 1; second < tests(); ++second)
                if (std::optional<Difference>& difference = differences_[placeOf(first, second)]; !difference)
                    difference = compareInCall(first, second);
        Results all;
        for (std::optional<Difference>& difference : differences_) {
            difference->leftOut =
                static_cast<long long>(rows_) - difference->first.positive - difference->first.negative;
            all.differences.push_back(std::move(*difference));
        }
        return all;
    }

private:
    /// The columns without the rows whose state is not known: those of the table where all are, copies otherwise.
    struct KnownStates {
        KnownStates(const CaseColumns& columns, const std::vector<std::string>& tests)
        {
            const auto isUnknown = [](double state) {
                return std::isnan(state) || state == CaseColumns::otherState; // exact
            };
            const bool allKnown = std::ranges::none_of(columns.state(), isUnknown);
            const auto keep = [&](std::span<const double> column) {
                if (allKnown)
                    return column;
                std::vector<double>& kept = copies.emplace_back();
                for (std::size_t row = 0; row < column.size(); ++row)
                    if (!isUnknown(columns.state()[row]))
                        kept.push_back(column[row]);
                return std::span<const double>(kept);
            };
            states = keep(columns.state());
            for (const std::string& test : tests)
                values.push_back(keep(columns.test(test)));
        }
        std::deque<std::vector<double>> copies; ///< a deque: spans refer to its elements
        std::span<const double> states;
        std::vector<std::span<const double>> values; ///< of each test
    };

    [[nodiscard]] std::size_t tests() const noexcept { return question_.tests.size(); }

    [[nodiscard]] std::vector<std::size_t> gapsOf(std::size_t test) const
    {
        std::vector<std::size_t> gaps;
        const std::span<const double> values = knownStates_.values[test];
        for (std::size_t row = 0; row < values.size(); ++row)
            if (std::isnan(values[row]))
                gaps.push_back(row);
        return gaps;
    }

    void compareInOneRun(const std::vector<std::size_t>& which)
    {
        RunCases cases{.state = knownStates_.states};
        for (const std::size_t t : which) {
            cases.tests.push_back(question_.tests[t]);
            cases.values.emplace_back(knownStates_.values[t]);
        }
        Results found = run(cases, question_, Comparison::paired, watch_);
        if (found.failure) // of too few cases, which a call takes as they are
            return;
        std::size_t next = 0;
        for (std::size_t a = 0; a < which.size(); ++a)
            for (std::size_t b = a + 1; b < which.size(); ++b)
                differences_[placeOf(which[a], which[b])] = std::move(found.differences[next++]);
    }

    [[nodiscard]] Difference compareInCall(std::size_t first, std::size_t second) const
    {
        if (watch_.cancelRequested && watch_.cancelRequested())
            throw cancelled();
        const auto& [copies, states, values] = knownStates_;
        const auc_comparison_res r = auc_pairedcomparison(
            states.data(), values[first].data(), values[second].data(), static_cast<int>(states.size()), nullptr,
            question_.equalIsPositive ? "include" : "exclude", question_.positiveEnd(), question_.level);
        if (r.first.posCount + r.first.negCount == 0.0 && anyComplete(first, second)) // how a call says so
            throw analysisError("not enough memory");
        return differenceOf(r, areaOf(question_.tests[first], r.first), areaOf(question_.tests[second], r.second));
    }

    [[nodiscard]] bool anyComplete(std::size_t first, std::size_t second) const
    {
        const auto& [copies, states, values] = knownStates_;
        for (std::size_t row = 0; row < states.size(); ++row)
            if (!std::isnan(values[first][row]) && !std::isnan(values[second][row]))
                return true;
        return false;
    }

    [[nodiscard]] Area areaOf(const std::string& test, const auc_res& r) const
    {
        return {.test = test,
                .positive = static_cast<long long>(r.posCount),
                .negative = static_cast<long long>(r.negCount),
                .area = r.area,
                .stdError = r.stdError,
                .significance = r.asymptoticSig,
                .lower = r.ciLower,
                .upper = r.ciUpper,
                .largerIsPositive = question_.largerIsPositive};
    }

    /// Pairs in the order (0, 1), (0, 2), ... (1, 2), ...
    [[nodiscard]] std::size_t placeOf(std::size_t first, std::size_t second) const
    {
        return first * (2 * tests() - first - 1) / 2 + second - first - 1;
    }

    std::size_t rows_;
    const Question& question_;
    const Watch& watch_;
    KnownStates knownStates_;
    std::vector<std::optional<Difference>> differences_;
};

Results studyCases(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    switch (question.rule) {
    case CaseRule::eachTest:
        return question.comparison == Comparison::independent ? eachDifference(columns, question, watch)
                                                              : eachArea(columns, question, watch);
    case CaseRule::pairwise: return Pairwise(columns, question, watch).results();
    case CaseRule::together: break;
    }
    return run(casesOf(columns, question.tests), question, question.comparison, watch);
}

/// What is not known comes last.
bool largerFirst(double a, double b) { return std::isnan(b) ? !std::isnan(a) : a > b; }

bool isWholeOrMissing(double value) { return std::isnan(value) || value == std::trunc(value); }

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
    const auto labels = std::make_shared<const CaseLabels>(table, question);
    Results results = study(table, *labels, question, watch);
    results.labels = labels;
    return results;
}

StudyByValue studyByValue(DataTable table, const Question& question, const Watch& watch)
{
    const auto labels = std::make_shared<const CaseLabels>(table, question);
    const RowsByValue rows(std::move(table), *labels->by());
    StudyByValue all{.missing = rows.missing(), .labels = labels};
    for (std::size_t v = 0; v < rows.values().size(); ++v)
        all.values.push_back(
            {rows.values()[v], study(rows.rowsOf(v), *labels, question, oneOf(watch, v, rows.values().size()))});
    return all;
}

} // namespace vexroc
