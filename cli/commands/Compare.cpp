#include "cli/commands/Commands.h"
#include "cli/commands/InferenceOptions.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/output/Documents.h"
#include "cli/study/remarksOn.h"
#include "cli/words/Failure.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vexroc {

namespace {

struct CompareOptions {
    QuestionOptions question;
    GroupOptions groups;
    std::string cases;
    InferenceOptions inference;
};

/// Each test between two groups of cases.
void askIndependent(const CompareOptions& options, Question& question)
{
    question.grouping = parseGroup(options.groups);
    question.comparison = Comparison::independent;
}

Report runCompare(const CompareOptions& options, const Surroundings& surroundings)
{
    Task task = parseTask(options.question);
    task.question.inference = parseDifference(options.inference);
    if (options.groups.group.empty() && !options.groups.select.empty())
        throw usageError("--select names two values of a column: name it with --group");
    if (!options.groups.group.empty() && !options.cases.empty())
        throw usageError("--cases is about tests on the same cases; it does not go with --group");
    if (options.groups.group.empty() && task.question.tests.size() < 2)
        throw usageError("name two or more tests to compare on the same cases, or --group COLUMN=VALUE,VALUE to "
                         "compare a test between two groups");
    if (options.groups.group.empty())
        askPaired(options.cases, task.question);
    else
        askIndependent(options, task.question);
    const Results results = answer(task, surroundings);
    remarkOnDifferences(task.question, results, task.remarks);
    return reportOf(task, comparisonDocument(task.question, results), surroundings);
}

} // namespace

Action addCompare(CLI::App& command)
{
    const auto options = std::make_shared<CompareOptions>();
    addQuestionOptions(command, options->question);
    addGroupOptions(command, options->groups);
    command.get_option("--group")->description(
        "Compare each test between two groups of cases: those of these values, or "
        "of the two that the column holds");
    addCasesOption(command, options->cases);
    addDifferenceOptions(command, options->inference);
    addSentenceOption(command, options->question.answer);
    command.footer("Example: vexroc compare data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
                   "         vexroc compare data.csv --state disease=1 --test marker --group sex=female,male");
    return [options](const Surroundings& surroundings) { return runCompare(*options, surroundings); };
}

} // namespace vexroc
