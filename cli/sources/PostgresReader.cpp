#include "cli/sources/PostgresReader.h"

#include "cli/sources/BinaryCopy.h"
#include "cli/system/InterruptGuard.h"
#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <libpq-fe.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string_view>

namespace vexroc {

namespace {

using Type = BinaryCopy::Type;

constexpr const char* whereAPasswordGoes = "put the password into ~/.pgpass, the variable PGPASSWORD or a service file";

struct FreeResult {
    void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, FreeResult>;

/// A message of the library in one line.
std::string oneLine(std::string_view message)
{
    std::string line;
    for (const char c : trimmed(message)) {
        const bool blank = c == '\n' || c == '\t' || c == ' ';
        if (!blank)
            line += c;
        else if (!line.ends_with(' '))
            line += ' ';
    }
    return visible(trimmed(line));
}

/// What went wrong, in the server's words where it has some.
std::string messageOf(const PGresult* result, PGconn* connection)
{
    const char* const primary = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
    if (!primary)
        return oneLine(PQerrorMessage(connection));
    const char* const hint = PQresultErrorField(result, PG_DIAG_MESSAGE_HINT);
    return oneLine(primary) + (hint ? "; " + oneLine(hint) : "");
}

/// An open connection, and the wait for its answers, which an interrupt ends.
class Server {
public:
    Server(const std::string& connection, const Surroundings& surroundings)
    {
        const std::array<const char*, 4> keywords{"dbname", "client_encoding", "fallback_application_name", nullptr};
        const std::array<const char*, 4> values{connection.c_str(), "UTF8", "vexroc", nullptr};
        constexpr int dbnameMayBeAConnection = 1;
        connection_.reset(PQconnectdbParams(keywords.data(), values.data(), dbnameMayBeAConnection));
        if (!connection_)
            throw std::bad_alloc();
        if (PQstatus(get()) != CONNECTION_OK)
            throw inputError("cannot connect to PostgreSQL: " + oneLine(PQerrorMessage(get()))
                             + (PQconnectionNeedsPassword(get()) ? std::string("; ") + whereAPasswordGoes : ""));
        PQsetNoticeProcessor(
            get(), [](void*, const char*) {}, nullptr);
        name_ = "PostgreSQL database " + visible(PQdb(get()));
        guard_.emplace(cancel_, surroundings);
    }

    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] Failure fault(const std::string& what) const { return inputError(name_ + ": " + what); }

    Result execute(const std::string& sql) { return answer(PQsendQuery(get(), sql.c_str())); }
    /// The columns of a query: one statement, not run.
    Result describe(const std::string& query)
    {
        answer(PQsendPrepare(get(), "", query.c_str(), 0, nullptr));
        return answer(PQsendDescribePrepared(get(), ""));
    }

    /// Begins a COPY to us.
    void beginCopy(const std::string& sql)
    {
        if (PQresultStatus(execute(sql).get()) != PGRES_COPY_OUT)
            throw fault("the query cannot be copied");
    }
    /// The next part of the copy; empty behind the last.
    std::string_view nextPart()
    {
        constexpr int doNotWait = 1;
        for (;;) {
            requireNotCancelled();
            char* data = nullptr;
            const int length = PQgetCopyData(get(), &data, doNotWait);
            part_.reset(data);
            if (length > 0)
                return {data, static_cast<std::size_t>(length)};
            if (length < 0) {
                finishCopy();
                return {};
            }
            wait();
        }
    }

private:
    [[nodiscard]] PGconn* get() const noexcept { return connection_.get(); }

    /// The last result of a command that was sent, or the fault that it ended with.
    Result answer(int sent)
    {
        if (sent == 0)
            throw fault(oneLine(PQerrorMessage(get())));
        Result last;
        while (Result next = nextResult()) {
            const ExecStatusType status = PQresultStatus(next.get());
            if (status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE)
                throw fault(messageOf(next.get(), get()));
            last = std::move(next);
            if (status == PGRES_COPY_OUT)
                break;
        }
        return last;
    }

    Result nextResult()
    {
        while (PQisBusy(get()))
            wait();
        return Result(PQgetResult(get()));
    }

    void finishCopy()
    {
        answer(1);
        if (PQstatus(get()) != CONNECTION_OK)
            throw fault(oneLine(PQerrorMessage(get())));
    }

    void wait()
    {
        requireNotCancelled();
        constexpr int patience = 100; // milliseconds, for an interrupt just before the call
        pollfd socket{.fd = PQsocket(get()), .events = POLLIN, .revents = 0};
        poll(&socket, 1, patience);
        if (PQconsumeInput(get()) == 0)
            throw fault(oneLine(PQerrorMessage(get())));
    }

    void requireNotCancelled()
    {
        if (!cancel_.IsCancelRequested())
            return;
        struct Free {
            void operator()(PGcancel* cancel) const noexcept { PQfreeCancel(cancel); }
        };
        std::array<char, 256> message{};
        if (const std::unique_ptr<PGcancel, Free> request{PQgetCancel(get())})
            PQcancel(request.get(), message.data(), static_cast<int>(message.size()));
        throw Failure(exitCancelled, "cancelled; nothing was written");
    }

    struct Finish {
        void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
    };
    struct FreeMemory {
        void operator()(char* memory) const noexcept { PQfreemem(memory); }
    };
    std::unique_ptr<PGconn, Finish> connection_;
    std::unique_ptr<char, FreeMemory> part_;
    std::string name_;
    VexCommon_920::CancelFlag cancel_;
    std::optional<InterruptGuard> guard_;
};

/// The columns of the query and how they are fetched.
class Columns {
public:
    Columns(Server& server, const Result& description)
    {
        const int count = PQnfields(description.get());
        for (int column = 0; column < count; ++column) {
            names_.emplace_back(PQfname(description.get(), column));
            types_.push_back(PQftype(description.get(), column));
        }
        if (names_.empty())
            throw server.fault("--query takes a statement that returns rows and changes nothing, such as SELECT");
    }

    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }
    [[nodiscard]] Type transfer(std::size_t column) const noexcept { return BinaryCopy::typeOf(types_[column]); }

    /// The columns by position: a query may give them any names, also the same twice.
    [[nodiscard]] std::string copyCommand(const std::string& query, const std::vector<std::size_t>& wanted) const
    {
        const auto name = [](std::size_t column) { return std::string("c").append(std::to_string(column)); };
        std::string all;
        for (std::size_t column = 0; column < names_.size(); ++column)
            all.append(all.empty() ? "" : ", ").append(name(column));
        std::string some;
        for (const std::size_t column : wanted)
            some.append(some.empty() ? "" : ", ")
                .append(name(column))
                .append(transfer(column) == Type::text ? "::text" : "");
        const std::size_t end = query.find_last_not_of("; \t\r\n");
        return "COPY (SELECT " + some + " FROM (\n" + query.substr(0, end + 1) + "\n) AS query(" + all
            + ")) TO STDOUT (FORMAT binary)";
    }

    /// The names of the types as the server spells them.
    [[nodiscard]] std::vector<std::string> typeNames(Server& server) const
    {
        std::string list;
        for (const Oid type : types_)
            list.append(list.empty() ? "" : ", ").append(std::to_string(type));
        const Result names =
            server.execute("SELECT pg_catalog.format_type(type, NULL) FROM pg_catalog.unnest(ARRAY[" + list
                           + "]::pg_catalog.oid[]) WITH ORDINALITY AS t(type, place) "
                             "ORDER BY place");
        std::vector<std::string> texts;
        for (int row = 0; row < PQntuples(names.get()); ++row)
            texts.emplace_back(PQgetvalue(names.get(), row, 0));
        texts.resize(types_.size());
        return texts;
    }

private:
    std::vector<std::string> names_;
    std::vector<Oid> types_;
};

std::string faultyCell(const std::string& source, std::size_t row, const std::string& column, const std::string& type,
                       const Cell& cell)
{
    return badCellMessage(source + ", row " + std::to_string(row), column, textOf(cell),
                          "its type is " + visible(type) + ": give a query that makes it a number, or NULL");
}

/// Every row of the copy into the sink; how many there were.
std::size_t copyRows(Server& server, const Columns& columns, const std::vector<std::size_t>& wanted,
                     const std::vector<std::string>& typeNames, RowSink& sink)
{
    std::vector<Type> types;
    for (const std::size_t column : wanted)
        types.push_back(columns.transfer(column));
    std::size_t rows = 0;
    BinaryCopy copy(types, [&](std::span<const Cell> cells) {
        ++rows;
        for (std::size_t i = 0; i < wanted.size(); ++i)
            if (const std::size_t column = wanted[i]; !sink.take(column, cells[i]))
                throw inputError(faultyCell(server.name(), rows, columns.names()[column], typeNames[column], cells[i]));
        sink.endRow();
    });
    for (std::string_view part = server.nextPart(); !part.empty(); part = server.nextPart())
        if (!copy.feed(part))
            throw server.fault("the server sends rows that are not understood");
    if (!copy.isComplete())
        throw server.fault("the rows end too early");
    return rows;
}

struct FreeOptions {
    void operator()(PQconninfoOption* options) const noexcept { PQconninfoFree(options); }
};

} // namespace

void requireNoPassword(const std::string& connection)
{
    const bool isName = connection.find('=') == std::string::npos && connection.find("://") == std::string::npos;
    if (isName)
        return;
    const std::unique_ptr<PQconninfoOption, FreeOptions> options{PQconninfoParse(connection.c_str(), nullptr)};
    if (!options) // the library's message would quote parts of what may hold a password
        throw usageError("--postgres: expected the name of a database, key=value pairs such as 'host=db dbname=study', "
                         "or a URI such as postgresql://db/study");
    for (const PQconninfoOption* option = options.get(); option->keyword; ++option)
        if (option->val && std::string_view(option->keyword).ends_with("password"))
            throw usageError(std::string("--postgres: a command line is no place for a password, which others can "
                                         "see there: ")
                             + whereAPasswordGoes);
}

void readPostgres(const std::string& connection, const std::string& query, const Surroundings& surroundings,
                  RowSink& sink)
{
    Server server(connection, surroundings);
    server.execute("BEGIN TRANSACTION ISOLATION LEVEL REPEATABLE READ READ ONLY");
    const Columns columns(server, server.describe(query));
    const std::vector<bool> isWanted = sink.begin({.source = server.name(),
                                                   .columns = columns.names(),
                                                   .place = server.name(),
                                                   .collection = "the query",
                                                   .hint = ""});
    std::vector<std::size_t> wanted;
    for (std::size_t column = 0; column < isWanted.size(); ++column)
        if (isWanted[column])
            wanted.push_back(column);
    const std::vector<std::string> typeNames = columns.typeNames(server);
    server.beginCopy(columns.copyCommand(query, wanted));
    if (copyRows(server, columns, wanted, typeNames, sink) == 0)
        throw server.fault("the query returns no rows");
}

} // namespace vexroc
