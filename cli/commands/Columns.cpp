#include "cli/commands/Commands.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/commands/columnFindings.h"
#include "cli/commands/nextCall.h"
#include "cli/input/ColumnSurvey.h"
#include "cli/words/Letters.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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

/// The same and the words, where they stand in a table of their own otherwise.
constexpr TableColumn wordList{"words", "words", CellRole::name};
constexpr std::array words{TableColumn{"column", "column", CellRole::name}, TableColumn{"word", "word", CellRole::name},
                           TableColumn{"rows", "rows", CellRole::count}};
constexpr std::array calls{TableColumn{"call", "call", CellRole::name}, TableColumn{"about", "about", CellRole::name},
                           TableColumn{"sure", "sure", CellRole::flag},
                           TableColumn{"complete", "complete", CellRole::flag}};
constexpr std::size_t mostWords = 10; // of a column

const char* kindOf(const ColumnFacts& facts)
{
    if (facts.hasTexts())
        return "text";
    return facts.hasNumbers() ? "numbers" : "empty";
}

/// Texts have words; so have a few different numbers, which may be states.
std::vector<Word> wordsOf(const ColumnFacts& facts)
{
    constexpr std::size_t fewNumbers = 5;
    const bool areFew = facts.knowsAllWords() && facts.spelledNumbers().size() <= fewNumbers;
    return facts.hasTexts() || areFew ? facts.words() : std::vector<Word>();
}

/// In quotes where blanks would not be seen.
std::string shown(const std::string& word) { return trimmed(word) == word ? word : '\'' + word + '\''; }

std::string moreWords(std::size_t count) { return "(" + std::to_string(count) + " more)"; }

/// "ill 3; well 2; (7 more)"
std::string wordsInOneCell(const ColumnFacts& facts)
{
    const std::vector<Word> all = wordsOf(facts);
    std::string list;
    for (std::size_t i = 0; i < std::min(all.size(), mostWords); ++i)
        list += (list.empty() ? "" : "; ") + shown(all[i].text) + ' ' + std::to_string(all[i].rows);
    return all.size() > mostWords ? list + "; " + moreWords(all.size() - mostWords) : list;
}

void addWords(const ColumnFacts& facts, bool forPeople, Table& table)
{
    const std::vector<Word> all = wordsOf(facts);
    std::size_t rest = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (i < mostWords)
            table.addRow({facts.name(), forPeople ? shown(all[i].text) : all[i].text, double(all[i].rows)});
        else
            rest += all[i].rows;
    }
    if (rest > 0 && forPeople)
        table.addRow({facts.name(), moreWords(all.size() - mostWords), double(rest)});
}

void addFacts(const ColumnFacts& facts, bool withWords, Table& table)
{
    const std::string more = std::string(">").append(std::to_string(facts.distinct()));
    const Table::Value distinct = facts.hasMore() ? Table::Value(more) : double(facts.distinct());
    std::vector<Table::Value> row{facts.name(), kindOf(facts),    double(facts.rows()), double(facts.missing()),
                                  distinct,     facts.smallest(), facts.largest()};
    const std::string list = withWords ? wordsInOneCell(facts) : "";
    if (withWords)
        row.emplace_back(list);
    table.addRow(row);
}

/// CSV is one table.
void addParts(const std::vector<ColumnFacts>& all, const std::vector<NextCall>& next, DocumentForm form,
              Document& document)
{
    const bool isOneTable = form == DocumentForm::csv;
    const std::span<const TableColumn> wordsBehind(&wordList, isOneTable ? 1 : 0);
    Table facts(joined({columns, wordsBehind}));
    Table wordTable(words);
    for (const ColumnFacts& column : all) {
        addFacts(column, isOneTable, facts);
        addWords(column, form == DocumentForm::text, wordTable);
    }
    document.parts.push_back({"columns", "", std::move(facts)});
    if (!isOneTable && (wordTable.rows() > 0 || form == DocumentForm::json))
        document.parts.push_back({"words", "", std::move(wordTable)});
    if (form == DocumentForm::json) {
        Table table(calls);
        for (const NextCall& call : next)
            table.addRow({call.command, call.about, double(call.isSure), double(call.isComplete)});
        document.parts.push_back({"next", "", std::move(table)});
    }
}

/// For people, what there is to say of the columns is part of the answer, and the next call its end: the likeliest
/// one last.
void close(const Remarks& remarks, const std::vector<NextCall>& next, Document& document)
{
    std::vector<Remark> found = remarks.cautions();
    std::ranges::move(remarks.notes(), std::back_inserter(found));
    if (!found.empty())
        document.closing.emplace_back("To look at:");
    for (const Remark& remark : found)
        document.closing.push_back("  " + remark.text);
    if (!found.empty())
        document.closing.emplace_back();
    for (auto call = next.rbegin(); call != next.rend(); ++call) { // the likeliest last
        document.closing.push_back(call->about);
        document.closing.push_back("  " + call->command);
    }
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
    const std::vector<ColumnFacts>& all = survey.finish();
    const std::vector<NextCall> next = nextCalls(all, options.input, input);
    Document document{
        .command = "columns", .heading = {"Columns of " + survey.source()}, .question = {{"input", survey.source()}}};
    addParts(all, next, task.form, document);
    for (const ColumnFacts& facts : all)
        addFindings(facts, input, remarks);
    if (task.form == DocumentForm::csv)
        remarks.add("next-call", "", next.front().command);
    if (task.form == DocumentForm::text)
        close(std::exchange(remarks, Remarks()), next, document);
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
