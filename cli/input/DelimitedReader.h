#pragma once

#include "cli/input/ByteSource.h"
#include "cli/study/RowSink.h"

#include <cstddef>
#include <optional>

namespace vexroc {

/// How text is written.
struct TextForm {
    std::optional<char> delimiter; ///< none: detected
    char decimal = '.';
};

// What is read at most, so that memory stays bounded whatever a file holds; the longest cell is that of RowSplitter.h.
constexpr std::size_t longestHeader = std::size_t{16} << 20; ///< bytes, with blank lines before it
constexpr std::size_t longestRow = std::size_t{64} << 20;    ///< bytes
constexpr std::size_t mostColumns = 1'000'000;

/// Reads delimited text with a header row into the sink.
///
/// Text: UTF-8, with or without a byte order mark; rows end with LF, CRLF or CR. Cells in double quotes may hold
/// delimiters, line ends and quotes doubled; blanks around cells without quotes do not count; blank lines are skipped.
/// Delimiter: the one given; or that of a first line such as "sep=;", which spreadsheets write and which is no row; or
/// whichever of comma, tab and semicolon is most frequent in the header outside quotes.
/// Memory: one block of text, or one row where that is longer.
/// Failure: throws an input error that names source, line, column and cell as far as they apply.
void readDelimited(ByteSource& source, const TextForm& form, RowSink& sink);

} // namespace vexroc
