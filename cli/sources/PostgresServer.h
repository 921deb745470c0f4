#pragma once

#include "cli/system/InterruptGuard.h"
#include "cli/system/Surroundings.h"
#include "cli/words/Failure.h"

#include "host/CancelFlag.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// of libpq-fe.h
struct pg_conn;
struct pg_result;

namespace vexroc {

/// An open connection to a PostgreSQL database, and the wait for its answers, which an interrupt ends.
///
/// libpq is opened here, when it is first needed. Failure: every call throws an input error that names the database, or
/// the package to install where libpq is not there.
class PostgresServer {
public:
    /// `connection` is the name of a database, or what libpq takes: key=value pairs or a URI.
    PostgresServer(const std::string& connection, const Surroundings& surroundings);

    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] Failure fault(const std::string& what) const { return inputError(name_ + ": " + what); }

    void execute(const std::string& sql) { answer(sql); }
    /// The first column of the rows.
    std::vector<std::string> texts(const std::string& sql);

    struct QueryColumn {
        std::string name;
        unsigned int type; ///< its number in the system catalogue
    };
    /// The columns of a query: one statement, not run.
    std::vector<QueryColumn> describe(const std::string& query);

    /// Begins a COPY to us.
    void beginCopy(const std::string& sql);
    /// The next part of the copy, which is one line of it; empty behind the last. Valid until the next call.
    std::string_view nextPart();

private:
    struct Clear {
        void operator()(pg_result* result) const noexcept;
    };
    using Result = std::unique_ptr<pg_result, Clear>;
    struct Finish {
        void operator()(pg_conn* connection) const noexcept;
    };
    struct FreeMemory {
        void operator()(char* memory) const noexcept;
    };

    [[nodiscard]] pg_conn* get() const noexcept { return connection_.get(); }
    [[nodiscard]] std::string message() const;
    Result answer(const std::string& sql);
    Result answer(int sent);
    Result nextResult();
    void wait();
    void requireNotCancelled();

    std::unique_ptr<pg_conn, Finish> connection_;
    std::unique_ptr<char, FreeMemory> part_;
    std::string name_;
    VexCommon_920::CancelFlag cancel_;
    std::optional<InterruptGuard> guard_;
};

/// Throws a usage error when the connection holds a password: command lines are visible to others.
void requireNoPassword(const std::string& connection);

} // namespace vexroc
