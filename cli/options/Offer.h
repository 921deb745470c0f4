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

/// An option whose value is one of some words, at least two. Help shows them as "text|csv"; another word gets the
/// nearest of them suggested.
CLI::Option* addChoice(CLI::App& command, const std::string& name, std::string& value,
                       const std::vector<std::string>& words, const std::string& description);

/// All commands of the program, in the order in which help shows them.
std::vector<std::string> commandNames(const CLI::App& program);

/// The name of an option without its dashes, or of a positional argument.
std::string nameOf(const CLI::Option& option);

/// The names of all options of a program or command, as nameOf gives them.
std::vector<std::string> optionNames(const CLI::App& app);

/// Is that text, such as "--level", an option of the program or command itself?
bool hasOption(const CLI::App& app, std::string_view text);

} // namespace vexroc
