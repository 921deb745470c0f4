#include "cli/commands/InputOptions.h"

#include "cli/options/Offer.h"
#include "cli/sources/PostgresServer.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <array>
#include <optional>
#include <string_view>

namespace vexroc {

namespace {

std::optional<char> parseDelimiter(const std::string& text)
{
    struct Named {
        std::string_view name;
        char delimiter;
    };
    constexpr std::array named{Named{"comma", ','}, Named{"tab", '\t'}, Named{"semicolon", ';'}, Named{",", ','},
                               Named{"\t", '\t'},   Named{"\\t", '\t'}, Named{";", ';'}};
    if (text.empty())
        return std::nullopt;
    for (const Named& candidate : named)
        if (text == candidate.name)
            return candidate.delimiter;
    throw usageError("--delimiter " + inQuotes(text) + ": expected comma, tab or semicolon");
}

/// The words beside the usual ones, or in their place behind a bare "none".
std::shared_ptr<const MissingWords> parseMissing(const std::string& text)
{
    if (text.empty())
        return std::make_shared<MissingWords>();
    std::vector<ListItem> items = splitItems(text, "--missing");
    const bool onlyThese = items.front().isWord("none");
    std::vector<std::string> words;
    for (std::size_t i = onlyThese ? 1 : 0; i < items.size(); ++i)
        words.push_back(std::move(items[i].text));
    return std::make_shared<MissingWords>(words, onlyThese);
}

void requireOneInput(const InputOptions& options)
{
    const bool sqlite = !options.sqlite.empty();
    const bool postgres = !options.postgres.empty();
    const bool table = !options.table.empty();
    const bool query = !options.query.empty();
    const struct {
        bool wrong;
        const char* message;
    } rules[] = {
        {options.file.empty() && !sqlite && !postgres,
         "FILE is required: name a file of delimited text, - for standard input, or a database with --sqlite FILE or "
         "--postgres CONNECTION"},
        {int(!options.file.empty()) + int(sqlite) + int(postgres) > 1,
         "FILE, --sqlite and --postgres are three places for the data: name one of them"},
        {table && !sqlite, "--table names a table of --sqlite FILE"},
        {query && !sqlite && !postgres, "--query asks a database: name it with --sqlite FILE or --postgres CONNECTION"},
        {sqlite && table && query, "--table and --query both say what to read: give one of them"},
        {sqlite && !table && !query, "--sqlite FILE needs --table NAME or --query SQL"},
        {postgres && !query, "--postgres CONNECTION needs --query SQL"},
        {!options.delimiter.empty() && (sqlite || postgres), "--delimiter goes with delimited text, not a database"},
        {options.decimal == "comma" && (sqlite || postgres),
         "--decimal comma goes with delimited text, not a database"},
    };
    for (const auto& [wrong, message] : rules)
        if (wrong)
            throw usageError(message);
}

} // namespace

void addInputOptions(CLI::App& command, InputOptions& options)
{
    command.add_option(
        "FILE", options.file,
        "Delimited text with a header row, packed by gzip, zstd, xz or bzip2 or not; - reads standard input");
    command.add_option("--delimiter", options.delimiter, "Between the cells of text; detected when not given")
        ->type_name("comma|tab|semicolon");
    addChoice(command, "--decimal", options.decimal, {"point", "comma"},
              "Decimal sign of the numbers in text; a point when not given");
    command
        .add_option("--missing", options.missing,
                    "More words for missing values; behind the bare word none in place of the usual ones")
        ->type_name("WORD[,WORD...]");
    command
        .add_option("--sqlite", options.sqlite, "Read this SQLite database instead of FILE; with --table or --query")
        ->type_name("FILE");
    command
        .add_option("--postgres", options.postgres,
                    "Read a PostgreSQL database instead of FILE: its name, or key=value pairs without a password; "
                    "with --query")
        ->type_name("CONNECTION");
    command.add_option("--table", options.table, "Table or view of the SQLite database")->type_name("NAME");
    command.add_option("--query", options.query, "Query whose rows are the data")->type_name("SQL");
}

Input parseInput(const InputOptions& options)
{
    requireOneInput(options);
    Input input{.kind = Input::Kind::delimited,
                .place = options.file,
                .form = {parseDelimiter(options.delimiter), options.decimal == "comma" ? ',' : '.'},
                .missingWords = parseMissing(options.missing),
                .table = options.table,
                .query = options.query};
    if (!options.sqlite.empty()) {
        input.kind = Input::Kind::sqlite;
        input.place = options.sqlite;
    } else if (!options.postgres.empty()) {
        input.kind = Input::Kind::postgres;
        input.place = options.postgres;
        requireNoPassword(options.postgres);
    }
    return input;
}

} // namespace vexroc
