#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vexroc {

/// The files that the options of a called command name for output; looks at them before any is opened.
///
/// Throws a usage error where one is also read, or written by another option, however it is spelled.
std::vector<std::string> soundFilesToWrite(const CLI::App& command);

} // namespace vexroc
