#include "cli/commands/QuestionOptions.h"

#include "cli/commands/AnalysisWatch.h"
#include "cli/options/Offer.h"
#include "cli/output/TableForms.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <optional>

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

} // namespace

void addQuestionOptions(CLI::App& command, QuestionOptions& options)
{
    addInputOptions(command, options.input);
    command.add_option("--state", options.state, "State column and the value of its positive cases")
        ->type_name("COLUMN=VALUE")
        ->required();
    command.add_option("--test", options.tests, "Test columns; one list, or the option repeated")
        ->type_name("COLUMN[,COLUMN...]")
        ->allow_extra_args(false)
        ->required();
    command.add_flag("--smaller", options.smaller, "Smaller test values are more positive");
    command.add_flag("--exclude", options.exclude,
                     "A value equal to a cut-off is negative; moves points of the curves, not the area");
    addAnswerOptions(command, options.answer);
}

void addAnswerOptions(CLI::App& command, AnswerOptions& options)
{
    addChoice(command, "--format", options.format, {"text", "csv", "json"}, "csv and json have exact numbers");
    const auto take = [&output = options.output](const std::string& file) { output = file == "-" ? "" : file; };
    command
        .add_option_function<std::string>("--output", take,
                                          "Write the results to this file; - is standard output, as without it")
        ->type_name("FILE");
    command.add_option("--tables", options.tables, "Write each table as a CSV file of its own into this folder")
        ->type_name("FOLDER");
}

void addInferenceOptions(CLI::App& command, InferenceOptions& options)
{
    command
        .add_option("--level", options.level, "Confidence level of the intervals, between 0 and 1; 0.95 when not given")
        ->type_name("P");
    command.add_flag("--bi-negative", options.biNegative,
                     "Standard error under bi-negative exponential distributions; needs as many positive as "
                     "negative cases");
}

Task parseTask(const QuestionOptions& options)
{
    Task task;
    task.input = parseInput(options.input);
    setAnswer(options.answer, task);
    task.question.input = task.input.place;
    task.question.state = parseValueChoice(options.state, "--state", 1);
    task.question.tests = parseTests(options.tests);
    task.question.largerIsPositive = !options.smaller;
    task.question.equalIsPositive = !options.exclude;
    return task;
}

void setAnswer(const AnswerOptions& options, Task& task)
{
    task.form = options.format == "csv" ? DocumentForm::csv
        : options.format == "json"      ? DocumentForm::json
                                        : DocumentForm::text;
    task.output = options.output;
    task.tables = options.tables;
}

ValueChoice parseValueChoice(const std::string& text, const std::string& option, std::size_t count)
{
    const std::string form = count == 2 ? "COLUMN=VALUE,VALUE" : "COLUMN=VALUE";
    Assignment assignment = splitAssignment(text, option, form);
    std::vector<std::string> values = parseValues(assignment.values, option);
    if (values.size() != count)
        throw usageError(option + " " + inQuotes(text) + ": expected " + form
                         + "; put a value that holds a comma in double quotes");
    return {std::move(assignment.column), std::move(values)};
}

std::vector<std::string> parseValues(std::string_view list, const std::string& option)
{
    std::vector<std::string> values = splitList(list, option);
    for (const std::string& value : values)
        if (isMissingWord(value))
            throw usageError(option + ": " + inQuotes(value) + " stands for a missing value and cannot be chosen");
    return values;
}

void setInference(const InferenceOptions& options, Question& question)
{
    const std::optional<double> level = parseNumber(options.level);
    if (!level || !(*level > 0.0 && *level < 1.0))
        throw usageError("--level " + inQuotes(options.level) + ": expected a number between 0 and 1, such as 0.95");
    question.level = *level;
    question.biNegative = options.biNegative;
}

Results answer(const Task& task, const Surroundings& surroundings)
{
    // Nothing is there to tidy up while the data are read: until then, an interrupt just ends the program.
    const DataTable table = readTable(task.input, surroundings, task.question.columns());
    AnalysisWatch watch(surroundings, table.rows);
    Results results = study(table, task.question, watch.watch());
    watch.requireNotCancelled();
    return results;
}

Report reportOf(const Task& task, const Document& document, const Surroundings& surroundings)
{
    Report report{.text = spelled(document, task.form, task.output.empty() ? surroundings.lineWidth : usualLineWidth),
                  .file = task.output,
                  .folder = task.tables,
                  .notes = document.notes};
    for (const Document::Part& part : document.parts) {
        if (task.tables.empty())
            break;
        report.tables.push_back({std::string(part.member), ""});
        writeCsv(part.table, report.tables.back().csv);
    }
    for (const RunMessage& warning : document.warnings)
        report.warnings.push_back(warning.line());
    return report;
}

} // namespace vexroc
