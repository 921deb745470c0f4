#pragma once

#include "cli/study/RowSink.h"
#include "cli/system/Progress.h"

#include <string>

namespace vexroc {

// Rows of an SQLite database into the sink. The database is opened read-only.
//
// Cells: NULL is no value; integers and reals come as they are stored, row by row whatever the column's type; a text,
// or a blob as the bytes of one, is understood like a cell of delimited text in quotes.
// Memory: one row; of a table, only the wanted columns are fetched.
// Failure: throws an input error that names the database, and row and column as far as they apply.

void readSqliteTable(const std::string& file, const std::string& table, const ProgressDisplay& progress, RowSink& sink);
/// `query` is one statement that returns rows and changes nothing.
void readSqliteQuery(const std::string& file, const std::string& query, const ProgressDisplay& progress, RowSink& sink);

} // namespace vexroc
