#include "cli/commands/Commands.h"
#include "cli/commands/Options.h"
#include "cli/commands/Outcome.h"
#include "cli/output/ResultColumns.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <vexrocproc/arraycalls.h>

#include <CLI/CLI.hpp>

#include <array>
#include <memory>

namespace vexroc {

namespace {

struct CompareOptions {
    StudyOptions study;
    std::string group;
    std::string level = "0.95";
    bool biNegative = false;
};

constexpr std::array pairColumns{
    TableColumn{"test1", "first", CellRole::name},           TableColumn{"test2", "second", CellRole::name},
    TableColumn{"positive", "positive", CellRole::count, 1}, TableColumn{"negative", "negative", CellRole::count, 1},
    TableColumn{"left_out", "left out", CellRole::count, 1},
};

constexpr std::array groupColumns{
    TableColumn{"test", "test", CellRole::name},
    TableColumn{"group1", "group 1", CellRole::name},
    TableColumn{"group2", "group 2", CellRole::name},
    TableColumn{"positive1", "positive 1", CellRole::count, 1},
    TableColumn{"negative1", "negative 1", CellRole::count, 1},
    TableColumn{"positive2", "positive 2", CellRole::count, 1},
    TableColumn{"negative2", "negative 2", CellRole::count, 1},
    TableColumn{"left_out", "left out", CellRole::count, 1},
};

constexpr std::array twoAreaColumns{
    TableColumn{"area1", "area 1", CellRole::statistic},
    TableColumn{"standard_error1", "std. error 1", CellRole::statistic},
    TableColumn{"area2", "area 2", CellRole::statistic},
    TableColumn{"standard_error2", "std. error 2", CellRole::statistic},
};

/// A row: what is compared, the numbers of cases, then what the comparison says.
void addRow(Row row, std::initializer_list<double> counts, const auc_comparison_res& r, Table& table)
{
    row.add(counts).add({r.first.area, r.first.stdError, r.second.area, r.second.stdError});
    table.addRow(row.add({r.areaDiff, r.stdErrorDiff, r.z, r.zSig, r.ciLower, r.ciUpper}).values());
}

/// Compares tests measured on the same cases, each pair on the cases in which both are known.
class PairedComparison {
public:
    PairedComparison(const Question& question, double level, const Study& study)
        : question_(question), level_(level), study_(study),
          table_(question.format, joined({pairColumns, inPanel(1, twoAreaColumns), inPanel(2, differenceColumns)}))
    {
    }

    Report run()
    {
        const std::vector<std::string>& tests = question_.tests;
        for (std::size_t first = 0; first < tests.size(); ++first)
            for (std::size_t second = first + 1; second < tests.size(); ++second)
                compare(tests[first], tests[second]);
        Findings findings{.format = question_.format,
                          .command = "compare",
                          .heading = {"Areas under the ROC curves of the same cases, compared", question_.heading(),
                                      "Standard errors: DeLong; confidence level " + shortest(level_)},
                          .question = question_.facts(),
                          .tables = {{"comparisons", "", std::move(table_)}}};
        addInference(findings.question, "DeLong", level_);
        report_.text = textOf(findings, report_.notes);
        report_.file = question_.output;
        return std::move(report_);
    }

private:
    void compare(const std::string& first, const std::string& second)
    {
        const Cases cases = study_.completeCases(std::array{first, second});
        const auc_comparison_res r =
            auc_pairedcomparison(cases.states.data(), cases.values[0].data(), cases.values[1].data(), cases.count(),
                                 nullptr, question_.include, question_.larger, level_);
        requireAnalysed(r.first, cases);
        addRow(Row{first, second}, {r.first.posCount, r.first.negCount, double(cases.leftOut)}, r, table_);
        const std::string subject = visible(first) + " and " + visible(second);
        addAreaNotes(subject, outcomeOf(cases, r.first), report_.notes);
        addDifferenceCautions(subject, r, report_.notes);
    }

    const Question& question_;
    double level_;
    const Study& study_;
    Table table_;
    Report report_;
};

/// Compares each test between two groups of cases.
class IndependentComparison {
public:
    IndependentComparison(const Question& question, const ValueChoice& groups, const CompareOptions& options,
                          const Study& study)
        : question_(question), groups_(groups), level_(parseLevel(options.level)), biNegative_(options.biNegative),
          study_(study),
          table_(question.format, joined({groupColumns, inPanel(2, twoAreaColumns), inPanel(3, differenceColumns)}))
    {
    }

    Report run()
    {
        for (const std::string& test : question_.tests)
            compare(test);
        if (const int others = study_.countGroup(otherValue); others > 0)
            report_.notes.push_back("rows in neither group, not part of the analysis: " + std::to_string(others));
        Findings findings{.format = question_.format,
                          .command = "compare",
                          .heading = {"Areas under the ROC curves of two independent groups, compared",
                                      "Groups: " + visible(groups_.column) + " = " + visible(groups_.values[0])
                                          + " and " + visible(groups_.values[1]),
                                      question_.heading(), standardErrorHeading(biNegative_, level_)},
                          .question = question_.facts(),
                          .tables = {{"comparisons", "", std::move(table_)}}};
        findings.question.emplace_back("group", groups_.column);
        addInference(findings.question, standardErrorWord(biNegative_), level_);
        report_.text = textOf(findings, report_.notes);
        report_.file = question_.output;
        return std::move(report_);
    }

private:
    void compare(const std::string& test)
    {
        const Cases one = study_.completeCases({&test, 1}, Match{0});
        const Cases two = study_.completeCases({&test, 1}, Match{1});
        const int leftOut = one.leftOut + two.leftOut + study_.countGroup(missingValue);
        const auc_comparison_res r = auc_indpendentcomparison(
            one.states.data(), one.values[0].data(), one.count(), two.states.data(), two.values[0].data(), two.count(),
            nullptr, question_.include, question_.larger, biNegative_ ? "bi-negative" : "nonparam", level_);
        requireAnalysed(r.first, one);
        requireAnalysed(r.second, two);
        addRow(Row{test, groups_.values[0], groups_.values[1]},
               {r.first.posCount, r.first.negCount, r.second.posCount, r.second.negCount, double(leftOut)}, r, table_);
        const std::string subject = visible(test) + " where " + visible(groups_.column) + " = ";
        addNotes(subject + visible(groups_.values[0]), one, r.first);
        addNotes(subject + visible(groups_.values[1]), two, r.second);
        addDifferenceCautions(visible(test), r, report_.notes);
    }

    void addNotes(const std::string& subject, const Cases& cases, const auc_res& result)
    {
        addAreaNotes(subject, outcomeOf(cases, result), report_.notes);
        if (biNegative_)
            addBiNegativeNotes(subject, cases, report_.notes);
    }

    const Question& question_;
    const ValueChoice& groups_;
    double level_;
    bool biNegative_;
    const Study& study_;
    Table table_;
    Report report_;
};

Report runPaired(const CompareOptions& options, const Question& question, const Surroundings& surroundings)
{
    const double level = parseLevel(options.level);
    if (question.tests.size() < 2)
        throw usageError("name two or more tests to compare on the same cases, or --group COLUMN=VALUE,VALUE to "
                         "compare a test between two groups");
    if (options.biNegative)
        throw usageError("--bi-negative goes with --group; tests on the same cases have DeLong standard errors");
    return PairedComparison(question, level, readStudy(question, std::nullopt, surroundings)).run();
}

Report runIndependent(const CompareOptions& options, const Question& question, const Surroundings& surroundings)
{
    const ValueChoice groups = parseValueChoice(options.group, "--group", 2);
    parseLevel(options.level); // before the data are read
    return IndependentComparison(question, groups, options, readStudy(question, groups, surroundings)).run();
}

Report runCompare(const CompareOptions& options, const Surroundings& surroundings)
{
    const Question question = parseQuestion(options.study);
    return options.group.empty() ? runPaired(options, question, surroundings)
                                 : runIndependent(options, question, surroundings);
}

} // namespace

Action addCompare(CLI::App& command)
{
    const auto options = std::make_shared<CompareOptions>();
    addStudyOptions(command, options->study);
    command.add_option("--group", options->group, "Compare each test between these two groups of cases")
        ->type_name("COLUMN=VALUE,VALUE");
    addLevelOption(command, options->level);
    addBiNegativeOption(command, options->biNegative);
    command.footer("Example: vexroc compare data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
                   "         vexroc compare data.csv --state disease=1 --test marker --group sex=female,male");
    return [options](const Surroundings& surroundings) { return runCompare(*options, surroundings); };
}

} // namespace vexroc
