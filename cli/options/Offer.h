#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace vexroc {

// What a command line offers: its commands and options, under the names that a caller uses.

/// All commands of the program, in the order in which help shows them.
std::vector<std::string> commandNames(const CLI::App& program);

/// The name of an option without its dashes, or of a positional argument.
std::string nameOf(const CLI::Option& option);

/// The names of all options of a program or command, as nameOf gives them.
std::vector<std::string> optionNames(const CLI::App& app);

/// Is that text, such as "--level", an option of the program or command itself?
bool hasOption(const CLI::App& app, std::string_view text);

} // namespace vexroc
