#include "cli/commands/Commands.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/input/ColumnSurvey.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <array>
#include <memory>

namespace vexroc {

namespace {

struct ColumnsOptions {
    InputOptions input;
    AnswerOptions answer;
};

constexpr std::array columns{
    TableColumn{"column", "column", CellRole::name},      TableColumn{"kind", "kind", CellRole::name},
    TableColumn{"rows", "rows", CellRole::count},         TableColumn{"missing", "missing", CellRole::count},
    TableColumn{"distinct", "distinct", CellRole::count}, TableColumn{"smallest", "smallest", CellRole::measure},
    TableColumn{"largest", "largest", CellRole::measure},
};

const char* kindOf(const ColumnFacts& facts)
{
    if (facts.hasTexts())
        return "text";
    return facts.hasNumbers() ? "numbers" : "empty";
}

Report runColumns(const ColumnsOptions& options, const Surroundings& surroundings)
{
    Task task;
    task.input = parseInput(options.input);
    setAnswer(options.answer, task);
    const Input& input = task.input;
    Remarks& remarks = task.remarks;
    ColumnSurvey survey(input.missingWords);
    readInput(input, surroundings, survey);

    Document document{
        .command = "columns", .heading = {"Columns of " + survey.source()}, .question = {{"input", survey.source()}}};
    Table table(columns);
    for (const ColumnFacts& facts : survey.finish()) {
        const std::string more = std::string(">").append(std::to_string(facts.distinct()));
        const Table::Value distinct = facts.hasMore() ? Table::Value(more) : double(facts.distinct());
        table.addRow({facts.name(), kindOf(facts), double(survey.rows()), double(facts.missing()), distinct,
                      facts.smallest(), facts.largest()});
        if (facts.hasOtherDecimals() && input.kind == Input::Kind::delimited)
            remarks.add("decimal-sign", facts.name(),
                        std::string("read with --decimal ") + (input.form.numbers.decimal == ',' ? "point" : "comma"));
    }
    document.parts.push_back({"columns", "", std::move(table)});
    return reportOf(task, document, surroundings);
}

} // namespace

Action addColumns(CLI::App& command)
{
    const auto options = std::make_shared<ColumnsOptions>();
    addInputOptions(command, options->input);
    addAnswerOptions(command, options->answer);
    command.footer("Example: vexroc columns data.csv");
    return [options](const Surroundings& surroundings) { return runColumns(*options, surroundings); };
}

} // namespace vexroc
