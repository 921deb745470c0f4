#include "cli/commands/InputOptions.h"

#include "cli/options/Offer.h"
#include "cli/sources/DecodedSource.h"
#include "cli/sources/PostgresServer.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <array>
#include <optional>
#include <string_view>
#include <utility>

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

char decimalOf(const InputOptions& options)
{
    return options.decimal == "comma" || (options.decimal.empty() && options.thousands == "point") ? ',' : '.';
}

Thousands thousandsOf(const std::string& word)
{
    return word == "comma"     ? Thousands::comma
        : word == "point"      ? Thousands::point
        : word == "blank"      ? Thousands::blank
        : word == "apostrophe" ? Thousands::apostrophe
        : word == "none"       ? Thousands::none
                               : Thousands::notSaid;
}

std::string parseEncoding(const std::string& name)
{
    if (name.empty() || isEncoding(name))
        return name;
    throw usageError("--encoding " + inQuotes(name)
                     + ": no such encoding; name one that iconv --list shows, such as windows-1252, ISO-8859-1, "
                       "UTF-16LE or SHIFT_JIS");
}

/// Options that say how text is written have no meaning for a database.
void requireText(const InputOptions& options)
{
    if (options.sqlite.empty() && options.postgres.empty())
        return;
    const std::pair<const char*, bool> given[] = {{"--delimiter", !options.delimiter.empty()},
                                                  {"--decimal comma", options.decimal == "comma"},
                                                  {"--thousands", !options.thousands.empty()},
                                                  {"--encoding", !options.encoding.empty()},
                                                  {"--header", options.header},
                                                  {"--no-header", options.noHeader}};
    for (const auto& [option, isGiven] : given)
        if (isGiven)
            throw usageError(std::string(option) + " goes with delimited text, not a database");
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
        {!options.thousands.empty() && options.thousands == (decimalOf(options) == ',' ? "comma" : "point"),
         "--thousands and --decimal name the same sign: one of them has to be another"},
        {options.header && options.noHeader, "--header and --no-header contradict each other: give one of them"},
    };
    for (const auto& [wrong, message] : rules)
        if (wrong)
            throw usageError(message);
    requireText(options);
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
    addChoice(command, "--thousands", options.thousands, {"comma", "point", "blank", "apostrophe", "none"},
              "Between the thousands of the numbers in text; none when not given");
    command.add_flag("--header", options.header, "The first row of text holds names, even if they are numbers");
    command.add_flag("--no-header", options.noHeader,
                     "The first row of text is the first case; the columns are called 1, 2, 3 and so on");
    command
        .add_option("--encoding", options.encoding,
                    "Encoding of text, as iconv calls it; UTF-8 or what a mark in front says when not given")
        ->type_name("NAME");
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
                .form = {.delimiter = parseDelimiter(options.delimiter),
                         .numbers = {decimalOf(options), thousandsOf(options.thousands)},
                         .firstRow = options.header ? FirstRow::names
                             : options.noHeader     ? FirstRow::cases
                                                    : FirstRow::notSaid,
                         .encoding = parseEncoding(options.encoding)},
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
