#include "cli/commands/QuestionOptions.h"

#include "cli/commands/AnalysisWatch.h"
#include "cli/options/Offer.h"
#include "cli/output/TableForms.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vexroc {

namespace {

std::vector<std::string> parseTests(const std::vector<std::string>& lists)
{
    std::vector<std::string> tests;
    for (const std::string& list : lists)
        for (std::string& test : splitList(list, "--test"))
            tests.push_back(std::move(test));
    return tests;
}

/// A last ":smaller" or ":larger" of a test may be its direction, or belong to the name of the column.
std::vector<DirectedTest> directedTests(const std::vector<std::string>& tests)
{
    std::vector<DirectedTest> directed;
    for (const std::string& test : tests)
        for (const std::string_view word : {":smaller", ":larger"})
            if (test.size() > word.size() && test.ends_with(word))
                directed.push_back({test, test.substr(0, test.size() - word.size()), word == ":larger"});
    return directed;
}

/// The negative values, or all others.
void parseNegative(const std::string& list, StateChoice& choice)
{
    if (list.empty())
        return;
    std::vector<ListItem> items = splitItems(list, "--negative");
    choice.others = std::ranges::any_of(items, [](const ListItem& item) { return item.isWord("others"); });
    if (choice.others && items.size() > 1)
        throw usageError("--negative " + inQuotes(list)
                         + ": the word others stands alone; for the value of that name put it in double quotes");
    for (std::size_t i = 0; !choice.others && i < items.size(); ++i)
        choice.negative.push_back(std::move(items[i].text));
}

StateQuestion parseState(const QuestionOptions& options)
{
    StateQuestion state;
    parseNegative(options.negative, state.choice);
    std::optional<CutText> cut = splitCut(options.state, "--state");
    if (cut && !cut->isAssignment) {
        state.column = std::move(cut->column);
        state.choice.sign = std::move(cut->sign);
        state.choice.bound = std::move(cut->bound);
        return state;
    }
    Assignment assignment = splitAssignment(options.state, "--state", "COLUMN=VALUE[,VALUE...], or COLUMN>=NUMBER");
    state.column = std::move(assignment.column);
    state.choice.positive = splitList(assignment.values, "--state");
    if (cut)
        state.otherwise = {std::move(cut->column), std::move(cut->sign), std::move(cut->bound)};
    return state;
}

void requireNoStateAmongTests(const Question& question)
{
    const std::string& state = question.state.column;
    if (std::ranges::find(question.tests, state) != question.tests.end())
        throw usageError("--test names the state column " + inQuotes(state) + "; a test is another column");
}

} // namespace

void addQuestionOptions(CLI::App& command, QuestionOptions& options)
{
    addInputOptions(command, options.input);
    command
        .add_option("--state", options.state,
                    "State column and the values of its positive cases; or a side of a number, such as 'grade>=3'")
        ->type_name("COLUMN=VALUE[,VALUE...]")
        ->required();
    command
        .add_option("--negative", options.negative,
                    "Values of the negative cases; the bare word others: all that are not positive. Needed where the "
                    "column holds more than two values")
        ->type_name("VALUE[,VALUE...]");
    command
        .add_option("--test", options.tests,
                    "Test columns; one list, or the option repeated. COLUMN:smaller and COLUMN:larger give a test its "
                    "own direction")
        ->type_name("COLUMN[,COLUMN...]")
        ->allow_extra_args(false)
        ->required();
    command.add_flag("--smaller", options.smaller, "Smaller test values are more positive");
    command.add_flag("--exclude", options.exclude,
                     "A value equal to a cut-off is negative; moves points of the curves, not the area");
    command.add_option("--count", options.count, "Column with the number of cases that a row stands for, from 0")
        ->type_name("COLUMN");
    addAnswerOptions(command, options.answer);
}

void addAnswerOptions(CLI::App& command, AnswerOptions& options)
{
    addChoice(command, "--format", options.format, {"text", "csv", "json", "markdown", "latex"},
              "csv and json have exact numbers; markdown and latex (booktabs) are tables for a paper");
    const auto take = [&output = options.output](const std::string& file) { output = file == "-" ? "" : file; };
    command
        .add_option_function<std::string>("--output", take,
                                          "Write the results to this file; - is standard output, as without it")
        ->type_name("FILE");
    command.add_option("--tables", options.tables, "Write each table as a CSV file of its own into this folder")
        ->type_name("FOLDER");
}

void addSortOption(CLI::App& command, std::string& sort)
{
    addChoice(command, "--sort", sort, {"given", "area"},
              "Order of the tests: as they are named, or largest area first");
}

Task parseTask(const QuestionOptions& options)
{
    Task task;
    task.input = parseInput(options.input);
    setAnswer(options.answer, task);
    task.question.input = task.input.place;
    task.question.state = parseState(options);
    task.question.tests = parseTests(options.tests);
    task.question.directed = directedTests(task.question.tests);
    task.question.count = options.count;
    task.question.largerIsPositive = !options.smaller;
    task.question.equalIsPositive = !options.exclude;
    return task;
}

void addSentenceOption(CLI::App& command, AnswerOptions& options)
{
    command.add_flag("--sentence", options.sentence, "Each result as one sentence for a paper, in place of tables");
}

void setAnswer(const AnswerOptions& options, Task& task)
{
    constexpr std::array<std::pair<std::string_view, DocumentForm>, 5> forms{{{"text", DocumentForm::text},
                                                                              {"csv", DocumentForm::csv},
                                                                              {"json", DocumentForm::json},
                                                                              {"markdown", DocumentForm::markdown},
                                                                              {"latex", DocumentForm::latex}}};
    if (options.sentence && options.format != "text")
        throw usageError("--sentence takes the place of tables, and --format " + options.format
                         + " is a form of tables: give one of them");
    task.form = options.sentence
        ? DocumentForm::sentence
        : std::ranges::find(forms, options.format, &decltype(forms)::value_type::first)->second;
    task.output = options.output;
    task.tables = options.tables;
}

void addGroupOptions(CLI::App& command, GroupOptions& options)
{
    command
        .add_option("--group", options.group,
                    "Column that splits the cases in two groups; its two values need no naming when it holds no more")
        ->type_name("COLUMN[=VALUE,VALUE]");
    command.add_option("--select", options.select, "The two values of the group column, in this order")
        ->type_name("VALUE,VALUE");
}

Grouping parseGroup(const GroupOptions& options)
{
    Assignment assignment = splitColumn(options.group, "--group");
    if (!assignment.values.empty() && !options.select.empty())
        throw usageError("--select and the values behind --group both name the two groups: give one of them");
    Grouping grouping{.column = std::move(assignment.column)};
    const std::string_view list = assignment.values.empty() ? options.select : assignment.values;
    if (list.empty())
        return grouping;
    const std::string option = options.select.empty() ? "--group" : "--select";
    grouping.by = Grouping::By::selected;
    grouping.selected = splitList(list, option);
    if (grouping.selected.size() != 2)
        throw usageError(option + " " + inQuotes(options.select.empty() ? options.group : options.select)
                         + ": expected two values, such as female,male; put a value that holds a comma in double "
                           "quotes");
    return grouping;
}

void addCasesOption(CLI::App& command, std::string& cases)
{
    addChoice(command, "--cases", cases, {"pairwise", "complete"},
              "Tests on the same cases: every two on the rows in which both are known, or all where all are known; "
              "pairwise when not given");
}

void askPaired(const std::string& cases, Question& question)
{
    if (question.inference.biNegative)
        throw usageError("--bi-negative does not go with tests on the same cases: their differences have DeLong "
                         "standard errors");
    question.comparison = Comparison::paired;
    question.completeCases = cases == "complete";
}

DataTable readQuestion(Task& task, const Surroundings& surroundings)
{
    task.question.call = surroundings.call;
    DataTable table = readTable(task.input, surroundings, task.question.columns());
    task.question.settle(table);
    requireNoStateAmongTests(task.question);
    return table;
}

Results answer(Task& task, const Surroundings& surroundings)
{
    // Nothing is there to tidy up while the data are read: until then, an interrupt just ends the program.
    const DataTable table = readQuestion(task, surroundings);
    AnalysisWatch watch(surroundings, table.rows);
    Results results = study(table, task.question, watch.watch(&task.remarks));
    watch.requireNotCancelled();
    results.labels->addRemarks(task.remarks.handle());
    return results;
}

Report reportOf(const Task& task, const Document& document, const Surroundings& surroundings)
{
    Report report{.text = spelled(document, task.remarks, task.form,
                                  task.output.empty() ? surroundings.lineWidth : usualLineWidth),
                  .file = task.output,
                  .folder = task.tables,
                  .notes = task.remarks.notes(),
                  .cautions = task.remarks.cautions()};
    for (const Document::Part& part : document.parts) {
        if (task.tables.empty() || !part.isForPrograms())
            continue;
        report.tables.push_back({std::string(part.member), ""});
        writeCsv(part.table, report.tables.back().csv);
    }
    return report;
}

} // namespace vexroc
