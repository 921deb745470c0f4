#pragma once

namespace CLI {
class App;
}

namespace vexroc {

/// Looks at the files that the options of a called command name, before any is opened.
///
/// Throws a usage error where a file to be written is also read, or written by another option, however it is spelled;
/// an output error where a file certainly cannot be written.
void requireSoundFiles(const CLI::App& command);

} // namespace vexroc
