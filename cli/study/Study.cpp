#include "cli/study/Study.h"

#include "cli/study/CaseColumns.h"
#include "cli/study/RowsByValue.h"
#include "vexrocproc/ROCStatusCodes.h"
#include "vexrocproc/arraycalls.h"

#include <algorithm>
#include <cmath>
#include <map>
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

/// A run for a test, or for two, of which little may be left: what a whole analysis calls no result is one without an
/// area then.
TestResult onlyResult(Results results)
{
    TestResult only = std::move(results.tests.front());
    only.area.leftOut = results.rows.read - only.area.positive - only.area.negative;
    return only;
}

/// Every test as if it were the only one.
Results eachArea(const CaseColumns& columns, const Question& question, const Watch& watch)
{
    Results all;
    for (std::size_t t = 0; t < question.tests.size(); ++t)
        all.tests.push_back(onlyResult(run(casesOf(columns, {question.tests[t]}), question, Comparison::none,
                                           oneOf(watch, t, question.tests.size()))));
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
    Area area = onlyResult(run(cases, ungrouped, Comparison::none, watch)).area;
    area.group = question.grouping->column + " = " + columns.groupWords()[group];
    return area;
}

Difference independentDifference(const Area& first, const Area& second, double level)
{
    const auto asCall = [](const Area& a) {
        return auc_res{.posCount = static_cast<double>(a.positive),
                       .negCount = static_cast<double>(a.negative),
                       .area = a.area,
                       .stdError = a.stdError,
                       .asymptoticSig = a.significance,
                       .ciLower = a.lower,
                       .ciUpper = a.upper};
    };
    const auc_comparison_res r = auc_comparison(asCall(first), asCall(second), level);
    return {.first = first,
            .second = second,
            .difference = r.areaDiff,
            .stdError = r.stdErrorDiff,
            .z = r.z,
            .significance = r.zSig,
            .lower = r.ciLower,
            .upper = r.ciUpper};
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
        all.differences.push_back(independentDifference(first, second, question.level));
        all.differences.back().leftOut = first.leftOut + second.leftOut + all.rows.missingGroup;
    }
    return all;
}

/// Every two tests on the cases in which both are known. Tests with the same gaps make one run.
class Pairwise {
public:
    Pairwise(const CaseColumns& columns, const Question& question, const Watch& watch)
        : columns_(columns), question_(question), watch_(watch), tests_(question.tests)
    {
        differences_.resize(tests_.size() * (tests_.size() - 1) / 2);
    }

    Results results()
    {
        const std::vector<std::vector<std::size_t>> runs = plan();
        for (std::size_t r = 0; r < runs.size(); ++r)
            compare(runs[r], oneOf(watch_, r, runs.size()));
        return {.differences = std::move(differences_)};
    }

private:
    /// Which tests go into each run, ascending: those with the same gaps, and every two with different ones.
    [[nodiscard]] std::vector<std::vector<std::size_t>> plan() const
    {
        std::map<std::vector<std::size_t>, std::vector<std::size_t>> testsOf; // by their gaps
        std::vector<const std::vector<std::size_t>*> kind(tests_.size());
        for (std::size_t t = 0; t < tests_.size(); ++t) {
            const auto found = testsOf.try_emplace(gapsOf(tests_[t])).first;
            found->second.push_back(t);
            kind[t] = &found->second;
        }
        std::vector<std::vector<std::size_t>> runs;
        for (const auto& [gaps, tests] : testsOf)
            if (tests.size() > 1)
                runs.push_back(tests);
        for (std::size_t first = 0; first < tests_.size(); ++first)
            for (std::size_t second = first + 1; second < tests_.size(); ++second)
                if (kind[first] != kind[second])
                    runs.push_back({first, second});
        return runs;
    }

    [[nodiscard]] std::vector<std::size_t> gapsOf(const std::string& test) const
    {
        std::vector<std::size_t> gaps;
        const std::span<const double> values = columns_.test(test);
        for (std::size_t row = 0; row < values.size(); ++row)
            if (std::isnan(values[row]))
                gaps.push_back(row);
        return gaps;
    }

    void compare(const std::vector<std::size_t>& which, const Watch& watch)
    {
        std::vector<std::string> names;
        for (const std::size_t t : which)
            names.push_back(tests_[t]);
        Results found = run(casesOf(columns_, names), question_, Comparison::paired, watch);
        std::size_t next = 0;
        for (std::size_t a = 0; a < which.size(); ++a)
            for (std::size_t b = a + 1; b < which.size(); ++b, ++next)
                differences_[placeOf(which[a], which[b])] = found.failure
                    ? Difference{found.tests[a].area, found.tests[b].area, found.rows.leftOut()}
                    : std::move(found.differences[next]);
    }

    /// Pairs in the order (0, 1), (0, 2), ... (1, 2), ...
    [[nodiscard]] std::size_t placeOf(std::size_t first, std::size_t second) const
    {
        return first * (2 * tests_.size() - first - 1) / 2 + second - first - 1;
    }

    const CaseColumns& columns_;
    const Question& question_;
    const Watch& watch_;
    const std::vector<std::string>& tests_;
    std::vector<Difference> differences_;
};

} // namespace

Results study(const DataTable& table, const Question& question, const Watch& watch)
{
    const CaseColumns columns(table, question);
    switch (question.rule) {
    case CaseRule::eachTest:
        return question.comparison == Comparison::independent ? eachDifference(columns, question, watch)
                                                              : eachArea(columns, question, watch);
    case CaseRule::pairwise: return Pairwise(columns, question, watch).results();
    case CaseRule::together: break;
    }
    return run(casesOf(columns, question.tests), question, question.comparison, watch);
}

StudyByValue studyByValue(DataTable table, const Question& question, const Watch& watch)
{
    const RowsByValue rows(std::move(table), question.by);
    StudyByValue all{.missing = rows.missing()};
    for (std::size_t v = 0; v < rows.values().size(); ++v)
        all.values.push_back(
            {rows.values()[v], study(rows.rowsOf(v), question, oneOf(watch, v, rows.values().size()))});
    return all;
}

} // namespace vexroc
