#include "cli/commands/SlicedOptions.h"

#include "cli/commands/AnalysisWatch.h"
#include "cli/options/Offer.h"
#include "cli/study/remarksOn.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace vexroc {

namespace {

double parseNumberItem(const std::string& option, const std::string& text, const Expected& expected)
{
    const std::optional<double> number = parseNumber(text);
    if (!number || !expected.holds(*number))
        throw usageError(option + ' ' + inQuotes(text) + ": expected " + expected.words);
    return *number;
}

/// One curve of several in progress and remarks.
Watch ofCurve(const Watch& watch, const Question& question, std::string_view value, std::size_t done, std::size_t all)
{
    Watch part = watch;
    if (!question.by.empty())
        part.prefix = question.by + " = " + std::string(value) + ": ";
    if (watch.progress)
        part.progress = [&watch, done, all](double share, int records) {
            watch.progress((static_cast<double>(done) + share) / static_cast<double>(all), records);
        };
    return part;
}

std::size_t curvesOf(const Analysis& analysis)
{
    std::size_t all = 0;
    for (const ValueResults& value : analysis.values)
        all += value.results.tests.size();
    return all;
}

} // namespace

void addSlicedOptions(CLI::App& command, SlicedOptions& options)
{
    addQuestionOptions(command, options.question);
    addGroupOptions(command, options.groups);
    addByOption(command, options.by);
}

void addByOption(CLI::App& command, std::string& by)
{
    command.add_option("--by", by, "One analysis per value of this column, in ascending order")->type_name("COLUMN");
}

void addPrevalenceOption(CLI::App& command, std::string& prevalence, const std::string& description)
{
    command.add_option("--prevalence", prevalence, description + "; that of the sample when not given")->type_name("P");
}

void addProportionOption(CLI::App& command, std::string& proportion)
{
    addChoice(command, "--proportion", proportion, {"wilson", "exact"},
              "Intervals of shares: Wilson's, as when not given, or those of Clopper and Pearson (exact)");
}

Task parseSliced(const SlicedOptions& options, bool isBootstrap)
{
    Task task = parseTask(options.question);
    if (options.groups.group.empty() && !options.groups.select.empty())
        throw usageError("--select names two values of a column: name it with --group");
    if (!options.groups.group.empty())
        task.question.grouping = parseGroup(options.groups);
    task.question.by = options.by;
    if (options.by == task.question.state.column)
        throw usageError("--by names the state column: every value would be one state; name another column");
    task.question.summaries = true;
    task.remarks.leaveOut({"interval-and-p", "ties", "two-values"}); // of areas, which are not shown
    Inference asked{.interval = isBootstrap ? "bootstrap" : "score"};
    parseLevel(options.inference, asked);
    parseBootstrap(options.inference, asked);
    // The areas themselves are not shown: their own interval and test are to cost nothing.
    task.question.inference = {
        .level = asked.level, .exact = "never", .replicates = asked.replicates, .seed = asked.seed};
    return task;
}

std::optional<double> parseNumberOption(const std::string& option, const std::string& text, const Expected& expected)
{
    return text.empty() ? std::nullopt : std::optional(parseNumberItem(option, text, expected));
}

std::vector<double> parseNumberList(const std::string& option, const std::vector<std::string>& lists,
                                    const Expected& expected)
{
    std::vector<double> numbers;
    for (const std::string& list : lists)
        for (const std::string& item : splitList(list, option))
            numbers.push_back(parseNumberItem(option, item, expected));
    return numbers;
}

std::optional<double> parsePrevalence(const std::string& text)
{
    return parseNumberOption("--prevalence", text,
                             {[](double p) { return p > 0.0 && p < 1.0; }, "a share between 0 and 1, such as 0.1"});
}

Analysis studySlices(Task& task, DataTable table, const Watch& watch)
{
    Analysis analysis{.question = task.question};
    if (task.question.by.empty()) {
        analysis.values.push_back({"", study(table, task.question, watch)});
        analysis.labels = analysis.values.front().results.labels;
    } else {
        StudyByValue byValue = studyByValue(std::move(table), task.question, watch);
        analysis.values = std::move(byValue.values);
        analysis.labels = byValue.labels;
        if (byValue.missing > 0)
            task.remarks.add("left-out", "",
                             std::to_string(byValue.missing) + " without a value of " + task.question.by);
    }
    analysis.labels->addRemarks(task.remarks.handle());
    for (const ValueResults& value : analysis.values)
        remarkOnValue(task.question, value, task.remarks);
    return analysis;
}

void askEach(const Analysis& analysis, const Watch& watch, const AskCurve& ask)
{
    const std::size_t all = curvesOf(analysis);
    std::size_t done = 0;
    for (const auto& [value, results] : analysis.values)
        for (const TestResult& test : results.tests)
            ask(value, test, ofCurve(watch, analysis.question, value, done++, all));
}

Analysis answerSliced(Task& task, const Surroundings& surroundings, const AskCurve& ask)
{
    DataTable table = readQuestion(task, surroundings);
    AnalysisWatch watch(surroundings, table.rows);
    const Watch asked = watch.watch(&task.remarks);
    Analysis analysis = studySlices(task, std::move(table), asked);
    if (task.question.by.empty())
        remarkOnAreas(analysis.values.front().results, task.remarks);
    if (curvesOf(analysis) == 0)
        throw analysisError(analysis.failure() ? analysis.failure()->sentence : "there is no curve");
    askEach(analysis, asked, ask);
    watch.requireNotCancelled();
    return analysis;
}

} // namespace vexroc
