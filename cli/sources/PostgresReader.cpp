#include "cli/sources/PostgresReader.h"

#include "cli/input/DelimitedReader.h"
#include "cli/sources/PostgresServer.h"
#include "cli/sources/WatchedSource.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <limits>
#include <string_view>
#include <vector>

namespace vexroc {

namespace {

/// What a column's cells are, by the number of its type in the system catalogue: these numbers never change.
enum class CellType { whole, decimal, real, boolean, text };

CellType cellTypeOf(unsigned int type) noexcept
{
    switch (type) {
    case 16: return CellType::boolean;
    case 20: // int8
    case 21: // int2
    case 23: // int4
        return CellType::whole;
    case 700: // float4
    case 701: // float8
        return CellType::real;
    case 1700: return CellType::decimal;
    }
    return CellType::text;
}

/// The cell as a source with types holds it. An empty text is NULL, or a text that is missing as well.
Cell typedCell(CellType type, std::string_view text)
{
    if (text.empty())
        return {};
    const bool isInfinity = type == CellType::decimal && text.ends_with("Infinity");
    if (type == CellType::real || isInfinity)
        return parseNumber(text).value_or(std::numeric_limits<double>::quiet_NaN());
    if (type == CellType::boolean)
        return text == "t";
    return text;
}

/// A column that is fetched: its place among those of the query, and what it holds.
struct FetchedColumn {
    std::size_t position;
    CellType cells;
    std::string name;
    std::string typeName; ///< as the server spells it
};

/// Gives cells their types again on their way from the server's text into a sink.
class TypedRows final : public RowSink {
public:
    TypedRows(const std::string& source, const std::vector<FetchedColumn>& columns, RowSink& sink)
        : source_(source), columns_(columns), sink_(sink)
    {
    }

    std::vector<std::size_t> begin(const InputHeader&) override
    {
        std::vector<std::size_t> wanted;
        for (std::size_t column = 0; column < columns_.size(); ++column)
            wanted.push_back(column);
        return wanted;
    }
    bool take(std::size_t index, const Cell& cell) override
    {
        const FetchedColumn& column = columns_[index];
        const Cell typed = typedCell(column.cells, std::get<std::string_view>(cell));
        if (!sink_.take(column.position, typed))
            throw inputError(badCellMessage(source_ + ", row " + std::to_string(rows() + 1), column.name, textOf(typed),
                                            "its type is " + visible(column.typeName)
                                                + ": give a query that makes it a number, or NULL"));
        return true;
    }
    void endRow() override
    {
        RowSink::endRow();
        sink_.endRow();
    }

private:
    const std::string& source_;
    const std::vector<FetchedColumn>& columns_;
    RowSink& sink_;
};

/// The text of a COPY that has begun.
class CopySource final : public ByteSource {
public:
    explicit CopySource(PostgresServer& server) : ByteSource(server.name()), server_(server) {}

    std::size_t read(std::span<char> block) override
    {
        std::size_t length = 0;
        while (length < block.size()) {
            if (part_.empty() && !nextPart())
                break;
            const std::size_t copied = part_.copy(block.data() + length, block.size() - length);
            part_.remove_prefix(copied);
            length += copied;
        }
        return length;
    }

private:
    bool nextPart()
    {
        if (!ended_)
            part_ = server_.nextPart();
        ended_ = part_.empty();
        if (ended_ && lines_ == 1)
            throw server_.fault("the query returns no rows");
        ++lines_;
        return !ended_;
    }

    PostgresServer& server_;
    std::string_view part_;
    std::size_t lines_ = 0; ///< with that of the header
    bool ended_ = false;
};

/// Asks for the columns by position: a query may give them any names, also the same twice.
std::string copyCommand(const std::string& query, std::size_t columnCount, const std::vector<FetchedColumn>& fetched)
{
    const auto join = [](std::string& list, const std::string& item) { list += (list.empty() ? "" : ", ") + item; };
    const auto name = [](std::size_t position) { return std::string("c").append(std::to_string(position)); };
    std::string all;
    for (std::size_t position = 0; position < columnCount; ++position)
        join(all, name(position));
    std::string selected;
    std::string quoted; // quotes keep the blanks at a text's ends
    for (const FetchedColumn& column : fetched) {
        const std::string c = name(column.position);
        const bool isText = column.cells == CellType::text;
        join(selected, c + (isText ? "::text AS " + c : column.cells == CellType::real ? "::float8 AS " + c : ""));
        if (isText)
            join(quoted, c);
    }
    if (fetched.size() == 1)
        selected += ", 0"; // a row that is but one NULL would be a blank line
    const std::size_t end = query.find_last_not_of("; \t\r\n");
    return "COPY (SELECT " + selected + " FROM (\n" + query.substr(0, end + 1) + "\n) AS query(" + all
        + ")) TO STDOUT (FORMAT csv, HEADER" + (quoted.empty() ? "" : ", FORCE_QUOTE (" + quoted + ")") + ")";
}

std::vector<FetchedColumn> fetchedColumns(PostgresServer& server,
                                          const std::vector<PostgresServer::QueryColumn>& columns, RowSink& sink)
{
    if (columns.empty())
        throw server.fault("--query takes a statement that returns rows and changes nothing, such as SELECT");
    InputHeader header{.source = server.name(), .place = server.name(), .collection = "the query"};
    std::string types;
    for (const PostgresServer::QueryColumn& column : columns) {
        header.columns.push_back(column.name);
        types += (types.empty() ? "" : ", ") + std::to_string(column.type);
    }
    const std::vector<std::size_t> wanted = sink.begin(header);
    const std::vector<std::string> names =
        server.texts("SELECT pg_catalog.format_type(type, NULL) FROM pg_catalog.unnest(ARRAY[" + types
                     + "]::pg_catalog.oid[]) WITH ORDINALITY AS t(type, place) ORDER BY place");
    std::vector<FetchedColumn> fetched;
    for (const std::size_t position : wanted)
        fetched.push_back({position, cellTypeOf(columns[position].type), columns[position].name, names.at(position)});
    return fetched;
}

} // namespace

void readPostgres(const std::string& connection, const std::string& query, const Surroundings& surroundings,
                  RowSink& sink)
{
    PostgresServer server(connection, surroundings);
    // Digits that read back as the same number, from servers of any age.
    server.execute("BEGIN TRANSACTION ISOLATION LEVEL REPEATABLE READ READ ONLY; SET LOCAL extra_float_digits = 3");
    const std::vector<PostgresServer::QueryColumn> columns = server.describe(query);
    const std::vector<FetchedColumn> fetched = fetchedColumns(server, columns, sink);
    server.beginCopy(copyCommand(query, columns.size(), fetched));
    CopySource text(server);
    WatchedSource watched(text, surroundings.progress, sink);
    TypedRows rows(server.name(), fetched, sink);
    readDelimited(watched, {.delimiter = ','}, rows);
}

} // namespace vexroc
