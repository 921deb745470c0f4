#include "cli/sources/PostgresServer.h"

#include "cli/system/Library.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <libpq-fe.h>
#include <poll.h>

#include <array>
#include <new>

namespace vexroc {

namespace {

constexpr const char* whereAPasswordGoes = "put the password into ~/.pgpass, the variable PGPASSWORD or a service file";

struct Libpq {
    Library library{"libpq.so.5", "libpq5", "reading a PostgreSQL database", inputError};
    decltype(&PQcancel) cancel = library["PQcancel"];
    decltype(&PQclear) clear = library["PQclear"];
    decltype(&PQconnectdbParams) connectdbParams = library["PQconnectdbParams"];
    decltype(&PQconnectionNeedsPassword) connectionNeedsPassword = library["PQconnectionNeedsPassword"];
    decltype(&PQconninfoFree) conninfoFree = library["PQconninfoFree"];
    decltype(&PQconninfoParse) conninfoParse = library["PQconninfoParse"];
    decltype(&PQconsumeInput) consumeInput = library["PQconsumeInput"];
    decltype(&PQdb) db = library["PQdb"];
    decltype(&PQerrorMessage) errorMessage = library["PQerrorMessage"];
    decltype(&PQfinish) finish = library["PQfinish"];
    decltype(&PQfname) fname = library["PQfname"];
    decltype(&PQfreeCancel) freeCancel = library["PQfreeCancel"];
    decltype(&PQfreemem) freemem = library["PQfreemem"];
    decltype(&PQftype) ftype = library["PQftype"];
    decltype(&PQgetCancel) getCancel = library["PQgetCancel"];
    decltype(&PQgetCopyData) getCopyData = library["PQgetCopyData"];
    decltype(&PQgetResult) getResult = library["PQgetResult"];
    decltype(&PQgetvalue) getvalue = library["PQgetvalue"];
    decltype(&PQisBusy) isBusy = library["PQisBusy"];
    decltype(&PQnfields) nfields = library["PQnfields"];
    decltype(&PQntuples) ntuples = library["PQntuples"];
    decltype(&PQresultErrorField) resultErrorField = library["PQresultErrorField"];
    decltype(&PQresultStatus) resultStatus = library["PQresultStatus"];
    decltype(&PQsendDescribePrepared) sendDescribePrepared = library["PQsendDescribePrepared"];
    decltype(&PQsendPrepare) sendPrepare = library["PQsendPrepare"];
    decltype(&PQsendQuery) sendQuery = library["PQsendQuery"];
    decltype(&PQsetNoticeProcessor) setNoticeProcessor = library["PQsetNoticeProcessor"];
    decltype(&PQsocket) socket = library["PQsocket"];
    decltype(&PQstatus) status = library["PQstatus"];
};

/// Opened when it is first asked for.
const Libpq& libpq()
{
    static const Libpq library;
    return library;
}

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
    const char* const primary = libpq().resultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
    if (!primary)
        return oneLine(libpq().errorMessage(connection));
    const char* const hint = libpq().resultErrorField(result, PG_DIAG_MESSAGE_HINT);
    return oneLine(primary) + (hint ? "; " + oneLine(hint) : "");
}

struct FreeOptions {
    void operator()(PQconninfoOption* options) const noexcept { libpq().conninfoFree(options); }
};

} // namespace

void PostgresServer::Clear::operator()(PGresult* result) const noexcept { libpq().clear(result); }
void PostgresServer::Finish::operator()(PGconn* connection) const noexcept { libpq().finish(connection); }
void PostgresServer::FreeMemory::operator()(char* memory) const noexcept { libpq().freemem(memory); }

PostgresServer::PostgresServer(const std::string& connection, const Surroundings& surroundings)
{
    const std::array<const char*, 4> keywords{"dbname", "client_encoding", "fallback_application_name", nullptr};
    const std::array<const char*, 4> values{connection.c_str(), "UTF8", "vexroc", nullptr};
    constexpr int dbnameMayBeAConnection = 1;
    connection_.reset(libpq().connectdbParams(keywords.data(), values.data(), dbnameMayBeAConnection));
    if (!connection_)
        throw std::bad_alloc();
    if (libpq().status(get()) != CONNECTION_OK)
        throw inputError("cannot connect to PostgreSQL: " + message()
                         + (libpq().connectionNeedsPassword(get()) ? std::string("; ") + whereAPasswordGoes : ""));
    libpq().setNoticeProcessor(
        get(), [](void*, const char*) {}, nullptr);
    name_ = "PostgreSQL database " + visible(libpq().db(get()));
    guard_.emplace(cancel_, surroundings);
}

std::string PostgresServer::message() const { return oneLine(libpq().errorMessage(get())); }

std::vector<std::string> PostgresServer::texts(const std::string& sql)
{
    const Result rows = answer(sql);
    std::vector<std::string> texts;
    for (int row = 0; row < libpq().ntuples(rows.get()); ++row)
        texts.emplace_back(libpq().getvalue(rows.get(), row, 0));
    return texts;
}

std::vector<PostgresServer::QueryColumn> PostgresServer::describe(const std::string& query)
{
    answer(libpq().sendPrepare(get(), "", query.c_str(), 0, nullptr));
    const Result description = answer(libpq().sendDescribePrepared(get(), ""));
    std::vector<QueryColumn> columns;
    for (int column = 0; column < libpq().nfields(description.get()); ++column)
        columns.push_back({libpq().fname(description.get(), column), libpq().ftype(description.get(), column)});
    return columns;
}

void PostgresServer::beginCopy(const std::string& sql)
{
    if (libpq().resultStatus(answer(sql).get()) != PGRES_COPY_OUT)
        throw fault("the query cannot be copied");
}

std::string_view PostgresServer::nextPart()
{
    constexpr int doNotWait = 1;
    for (;;) {
        requireNotCancelled();
        char* data = nullptr;
        const int length = libpq().getCopyData(get(), &data, doNotWait);
        part_.reset(data);
        if (length > 0)
            return {data, static_cast<std::size_t>(length)};
        if (length < 0)
            break;
        wait();
    }
    answer(1);
    if (libpq().status(get()) != CONNECTION_OK)
        throw fault(message());
    return {};
}

PostgresServer::Result PostgresServer::answer(const std::string& sql)
{
    return answer(libpq().sendQuery(get(), sql.c_str()));
}

/// The last result of a command that was sent, or the fault that it ended with.
PostgresServer::Result PostgresServer::answer(int sent)
{
    if (sent == 0)
        throw fault(message());
    Result last;
    while (Result next = nextResult()) {
        const ExecStatusType status = libpq().resultStatus(next.get());
        if (status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE)
            throw fault(messageOf(next.get(), get()));
        last = std::move(next);
        if (status == PGRES_COPY_OUT)
            break;
    }
    return last;
}

PostgresServer::Result PostgresServer::nextResult()
{
    while (libpq().isBusy(get()))
        wait();
    return Result(libpq().getResult(get()));
}

void PostgresServer::wait()
{
    requireNotCancelled();
    constexpr int patience = 100; // milliseconds, for an interrupt just before the call
    pollfd socket{.fd = libpq().socket(get()), .events = POLLIN, .revents = 0};
    poll(&socket, 1, patience);
    if (libpq().consumeInput(get()) == 0)
        throw fault(message());
}

void PostgresServer::requireNotCancelled()
{
    if (!cancel_.IsCancelRequested())
        return;
    struct FreeCancel {
        void operator()(PGcancel* cancel) const noexcept { libpq().freeCancel(cancel); }
    };
    std::array<char, 256> ignored{};
    if (const std::unique_ptr<PGcancel, FreeCancel> request{libpq().getCancel(get())})
        libpq().cancel(request.get(), ignored.data(), static_cast<int>(ignored.size()));
    throw cancelled();
}

void requireNoPassword(const std::string& connection)
{
    const bool isName = connection.find('=') == std::string::npos && connection.find("://") == std::string::npos;
    if (isName)
        return;
    const std::unique_ptr<PQconninfoOption, FreeOptions> options{libpq().conninfoParse(connection.c_str(), nullptr)};
    if (!options) // the library's message would quote parts of what may hold a password
        throw usageError("--postgres: expected the name of a database, key=value pairs such as 'host=db dbname=study', "
                         "or a URI such as postgresql://db/study");
    for (const PQconninfoOption* option = options.get(); option->keyword; ++option)
        if (option->val && std::string_view(option->keyword).ends_with("password"))
            throw usageError(std::string("--postgres: a command line is no place for a password, which others can "
                                         "see there: ")
                             + whereAPasswordGoes);
}

} // namespace vexroc
