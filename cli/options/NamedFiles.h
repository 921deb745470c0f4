#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace vexroc {

/// The tables of all commands, as their files in the folder of --tables are called.
inline constexpr std::array<std::string_view, 12> tableNames{"areas",       "best_cut_offs", "cases", "columns",
                                                             "comparisons", "net_benefits",  "next",  "partial_areas",
                                                             "points",      "pr_areas",      "rates", "words"};
std::string tableFile(const std::string& folder, std::string_view table);

/// The files that the options of a called command name for output; looks at them before any is opened.
///
/// Throws a usage error where one is also read, or written by another option, however it is spelled.
std::vector<std::string> soundFilesToWrite(const CLI::App& command);

} // namespace vexroc
