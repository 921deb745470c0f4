#pragma once

#include "cli/input/ByteSource.h"
#include "cli/input/DataTable.h"

#include <optional>
#include <span>

namespace vexroc {

/// What becomes of the columns that no request names.
enum class OtherColumns {
    skipped,
    numeric, ///< kept as numbers, behind the requested ones, where every cell is a number or missing and some a number
};

/// Reads delimited text with a header row and keeps the requested columns (a request made twice is kept once).
///
/// Text: UTF-8, with or without a byte order mark; rows end with LF, CRLF or CR. Cells in double quotes may hold
/// delimiters, line ends and quotes doubled; blanks around cells without quotes do not count; blank lines are skipped.
/// Delimiter: the one given, or whichever of comma, tab and semicolon is most frequent in the header outside quotes.
/// Memory: the columns kept, or still candidates, and one block of text.
/// Failure: throws an input error that names source, line, column and cell as far as they apply.
DataTable readDelimited(ByteSource& source, std::span<const ColumnRequest> requests, std::optional<char> delimiter,
                        OtherColumns others = OtherColumns::skipped);

} // namespace vexroc
