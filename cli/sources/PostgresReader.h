#pragma once

#include "cli/study/RowSink.h"
#include "cli/system/Surroundings.h"

#include <string>

namespace vexroc {

/// Reads the rows of a query into the sink, in a transaction that cannot write, and tells the progress of it.
///
/// `connection` is the name of a database, or what libpq takes: key=value pairs or a URI.
/// Cells: numbers by the digits that the server makes of them, a boolean as such, every other type as the server's text
/// of it. NULL is no value. Only the wanted columns are fetched.
/// Memory: one block of text, and what libpq has received.
/// An interrupt (Ctrl-C) cancels the query on the server and ends the run.
/// Failure: throws an input error that names the database, and row and column as far as they apply; or the package to
/// install where libpq is not there.
void readPostgres(const std::string& connection, const std::string& query, const Surroundings& surroundings,
                  RowSink& sink);

} // namespace vexroc
