#pragma once

#include "cli/input/ByteSource.h"
#include "cli/study/RowSink.h"
#include "cli/words/CallLine.h"
#include "cli/words/Numbers.h"

#include <cstddef>
#include <optional>
#include <string>

namespace vexroc {

/// What the first row of a text is.
enum class FirstRow { notSaid, names, cases };

/// How text is written.
struct TextForm {
    std::optional<char> delimiter = {}; ///< none: detected
    NumberForm numbers = {};
    FirstRow firstRow = FirstRow::notSaid;
    std::string encoding = {}; ///< that it was in before; for messages
};

// What is read at most, so that memory stays bounded whatever a file holds; the longest cell is that of RowSplitter.h.
constexpr std::size_t longestHeader = std::size_t{16} << 20; ///< bytes, with blank lines before it
constexpr std::size_t longestRow = std::size_t{64} << 20;    ///< bytes
constexpr std::size_t mostColumns = 1'000'000;

/// Reads delimited text into the sink; `call` is the one that asks for it, for messages.
///
/// Text: UTF-8, with or without a byte order mark; rows end with LF, CRLF or CR. Cells in double quotes may hold
/// delimiters, line ends and quotes doubled; blanks around cells without quotes do not count; blank lines are skipped.
/// Names of columns: in the first row; a first row of numbers only has to be said to be one, or cases, and then the
/// names are 1, 2, 3 and so on. So is an empty name the number of its column.
/// Delimiter: the one given; or that of a first line such as "sep=;", which spreadsheets write and which is no row; or
/// whichever of comma, tab and semicolon is most frequent in the header outside quotes.
/// Memory: one block of text, or one row where that is longer.
/// Failure: throws an input error that names source, line, column and cell as far as they apply.
void readDelimited(ByteSource& source, const TextForm& form, RowSink& sink, const CallLine& call = CallLine());

} // namespace vexroc
