#pragma once

#include "cli/input/ByteSource.h"
#include "cli/study/RowSink.h"

#include <optional>

namespace vexroc {

/// How text is written.
struct TextForm {
    std::optional<char> delimiter; ///< none: detected
    char decimal = '.';
};

/// Reads delimited text with a header row into the sink.
///
/// Text: UTF-8, with or without a byte order mark; rows end with LF, CRLF or CR. Cells in double quotes may hold
/// delimiters, line ends and quotes doubled; blanks around cells without quotes do not count; blank lines are skipped.
/// Delimiter: the one given; or that of a first line such as "sep=;", which spreadsheets write and which is no row; or
/// whichever of comma, tab and semicolon is most frequent in the header outside quotes.
/// Memory: one block of text.
/// Failure: throws an input error that names source, line, column and cell as far as they apply.
void readDelimited(ByteSource& source, const TextForm& form, RowSink& sink);

} // namespace vexroc
