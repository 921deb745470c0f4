#include "cli/sources/SqliteReader.h"

#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <system_error>

namespace vexroc {

namespace {

std::string inIdentifierQuotes(std::string_view name)
{
    std::string quoted = "\"";
    for (const char c : name)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

class Database {
public:
    explicit Database(const std::string& file) : name_(visible(file))
    {
        sqlite3* opened = nullptr;
        const int answer = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
        connection_.reset(opened); // there is one even when opening failed
        if (!opened)
            throw std::bad_alloc();
        if (answer != SQLITE_OK)
            throw cannotOpen();
        constexpr int patience = 5000; // milliseconds that another program may keep the database locked
        sqlite3_busy_timeout(opened, patience);
    }

    [[nodiscard]] sqlite3* connection() const noexcept { return connection_.get(); }
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    /// What the library says of the last failure.
    [[nodiscard]] std::string message() const { return visible(sqlite3_errmsg(connection_.get())); }
    [[nodiscard]] Failure fault(const std::string& what) const { return inputError(name_ + ": " + what); }

private:
    [[nodiscard]] Failure cannotOpen() const
    {
        const int system = sqlite3_system_errno(connection_.get());
        return inputError("cannot read " + name_ + ": "
                          + (system != 0 ? std::generic_category().message(system) : message()));
    }

    struct CloseDatabase {
        void operator()(sqlite3* connection) const noexcept { sqlite3_close(connection); }
    };
    std::string name_;
    std::unique_ptr<sqlite3, CloseDatabase> connection_;
};

class Statement {
public:
    Statement(const Database& database, std::string_view sql) : database_(database)
    {
        if (sql.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            throw database.fault("the query is too long");
        sqlite3_stmt* prepared = nullptr;
        const char* rest = nullptr;
        understood_ =
            sqlite3_prepare_v2(database.connection(), sql.data(), static_cast<int>(sql.size()), &prepared, &rest)
            == SQLITE_OK;
        statement_.reset(prepared);
        if (understood_)
            rest_ = sql.substr(static_cast<std::size_t>(rest - sql.data()));
    }

    [[nodiscard]] bool isUnderstood() const noexcept { return understood_; }
    /// False for a text without a statement, such as a comment.
    [[nodiscard]] bool isThere() const noexcept { return statement_ != nullptr; }
    [[nodiscard]] std::string_view textBehind() const noexcept { return rest_; }
    [[nodiscard]] bool changesNothing() const noexcept { return sqlite3_stmt_readonly(statement_.get()) != 0; }

    [[nodiscard]] std::vector<std::string> columns() const
    {
        std::vector<std::string> names;
        for (int column = 0; column < sqlite3_column_count(statement_.get()); ++column) {
            const char* const name = sqlite3_column_name(statement_.get(), column);
            if (!name)
                throw std::bad_alloc();
            names.emplace_back(name);
        }
        return names;
    }

    /// False behind the last row.
    bool step()
    {
        const int answer = sqlite3_step(statement_.get());
        if (answer != SQLITE_ROW && answer != SQLITE_DONE)
            throw database_.fault(database_.message());
        return answer == SQLITE_ROW;
    }

    /// A text is valid until the next step.
    [[nodiscard]] Cell cell(int column) const
    {
        sqlite3_stmt* const statement = statement_.get();
        switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL: return {};
        case SQLITE_INTEGER: return std::int64_t{sqlite3_column_int64(statement, column)};
        case SQLITE_FLOAT: return sqlite3_column_double(statement, column);
        }
        const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        if (!text)
            throw std::bad_alloc();
        return std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
    }

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };
    const Database& database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
    std::string_view rest_;
    bool understood_ = false;
};

/// Puts the rows of a statement into the sink, and how far it is on show.
class Rows {
public:
    Rows(const Database& database, const std::vector<std::string>& names, const ProgressDisplay& progress,
         RowSink& sink)
        : database_(database), names_(names), sink_(sink),
          progress_(progress, [] { return std::nullopt; }) // a database does not say before the last row
    {
    }

    /// Result column `positions[i]` is column `columns[i]` of the sink. False when there are no rows.
    [[nodiscard]] bool read(Statement& statement, const std::vector<int>& positions,
                            const std::vector<std::size_t>& columns)
    {
        while (statement.step()) {
            for (std::size_t i = 0; i < columns.size(); ++i)
                take(statement.cell(positions[i]), columns[i]);
            sink_.endRow();
            progress_.tell(sink_.rows());
        }
        return sink_.rows() > 0;
    }

private:
    void take(const Cell& cell, std::size_t column)
    {
        if (!sink_.take(column, cell))
            throw inputError(
                badCellMessage(place(), names_[column], textOf(cell), "give a query that makes it a number, or NULL"));
    }
    [[nodiscard]] std::string place() const { return database_.name() + ", row " + std::to_string(sink_.rows() + 1); }

    const Database& database_;
    const std::vector<std::string>& names_;
    RowSink& sink_;
    ReadingProgress progress_;
};

/// Announces the columns to the sink; which of them it wants.
std::vector<std::size_t> wantedColumns(const Database& database, const std::vector<std::string>& names,
                                       const std::string& collection, RowSink& sink)
{
    return sink.begin(
        {.source = database.name(), .columns = names, .place = database.name(), .collection = collection});
}

std::vector<std::string> tablesOf(const Database& database)
{
    Statement statement(database,
                        "SELECT name FROM sqlite_schema WHERE type IN ('table', 'view') "
                        "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY name");
    if (!statement.isUnderstood())
        throw database.fault(database.message());
    std::vector<std::string> names;
    while (statement.step())
        names.push_back(textOf(statement.cell(0)));
    return names;
}

/// Why no column of the table can be selected: there is no such table, or what the library said.
Failure unknownTable(const Database& database, const std::string& table, const std::string& message)
{
    const std::vector<std::string> tables = tablesOf(database);
    if (message.find("no such table") == std::string::npos || std::ranges::find(tables, table) != tables.end())
        return database.fault(message);
    if (tables.empty())
        return database.fault("no table " + inQuotes(table) + "; the database has no tables");
    const std::vector<std::string> near = nearWords(table, tables);
    return database.fault("no table " + inQuotes(table)
                          + (near.empty() ? "; its tables are " + listed(tables, 8)
                                          : "; did you mean " + listed(near, near.size()) + "?"));
}

bool holdsStatement(const Database& database, std::string_view sql)
{
    const Statement statement(database, sql);
    return !statement.isUnderstood() || statement.isThere();
}

void requireOneReadingStatement(const Database& database, const Statement& statement)
{
    if (!statement.isUnderstood())
        throw database.fault("the query is not understood: " + database.message());
    if (!statement.isThere() || holdsStatement(database, statement.textBehind()))
        throw database.fault("--query takes one statement");
    if (!statement.changesNothing() || statement.columns().empty())
        throw database.fault("--query takes a statement that returns rows and changes nothing, such as SELECT");
}

} // namespace

void readSqliteTable(const std::string& file, const std::string& table, const ProgressDisplay& progress, RowSink& sink)
{
    const Database database(file);
    const std::string from = " FROM " + inIdentifierQuotes(table);
    const Statement all(database, "SELECT *" + from);
    if (!all.isUnderstood())
        throw unknownTable(database, table, database.message());
    const std::vector<std::string> names = all.columns();
    const std::vector<std::size_t> columns = wantedColumns(database, names, "table " + inQuotes(table), sink);
    std::string list;
    std::vector<int> positions;
    for (const std::size_t column : columns) {
        list += (list.empty() ? "" : ", ") + inIdentifierQuotes(names[column]);
        positions.push_back(static_cast<int>(positions.size()));
    }
    Statement some(database, "SELECT " + list + from);
    if (!some.isUnderstood())
        throw database.fault(database.message());
    if (!Rows(database, names, progress, sink).read(some, positions, columns))
        throw database.fault("table " + inQuotes(table) + " has no rows");
}

void readSqliteQuery(const std::string& file, const std::string& query, const ProgressDisplay& progress, RowSink& sink)
{
    const Database database(file);
    Statement statement(database, query);
    requireOneReadingStatement(database, statement);
    const std::vector<std::string> names = statement.columns();
    const std::vector<std::size_t> columns = wantedColumns(database, names, "the query", sink);
    if (!Rows(database, names, progress, sink).read(statement, {columns.begin(), columns.end()}, columns))
        throw database.fault("the query returns no rows");
}

} // namespace vexroc
