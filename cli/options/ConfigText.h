#pragma once

#include <iosfwd>
#include <string>

namespace vexroc {

/// The text of a configuration file as CLI11's reader takes it: without comments, which it would also see in a "#"
/// inside quotes, and with every list on one line.
///
/// What it would silently take for something else is refused: throws a usage error that names the line of an open quote
/// or list, text behind a list, a line that is neither KEY = VALUE nor [COMMAND], or an escape.
std::string readableConfig(std::istream& input);

} // namespace vexroc
