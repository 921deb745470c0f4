#pragma once

#include "cli/study/RowSink.h"
#include "cli/system/Surroundings.h"

#include <string>

namespace vexroc {

/// Throws a usage error when the connection holds a password: command lines are visible to others.
void requireNoPassword(const std::string& connection);

/// Reads the rows of a query into the sink, in a transaction that cannot write.
///
/// `connection` is the name of a database, or what libpq takes: key=value pairs or a URI.
/// Cells: integers and floating-point numbers as they are, numeric through its decimal digits, a boolean as such;
/// every other type as the text that the server makes of it. NULL is no value.
/// Only the wanted columns are fetched. Memory: one row, and what libpq has received.
/// An interrupt (Ctrl-C) cancels the query on the server and ends the run.
/// Failure: throws an input error that names the database, and row and column as far as they apply.
void readPostgres(const std::string& connection, const std::string& query, const Surroundings& surroundings,
                  RowSink& sink);

} // namespace vexroc
