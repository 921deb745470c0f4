#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace vexroc {

// What the command line offers, read off its options: the source of manual page, completion and suggestions.

/// What a command does with the file that an option names.
enum class FileUse { none, read, written };

struct OptionOutline {
    std::string name;               ///< without its dashes
    std::string value;              ///< what stands for the value in help texts; empty for a flag
    std::vector<std::string> words; ///< all values that there are; empty where any may stand
    std::string description;
    FileUse file = FileUse::none;
    bool required = false;
    bool isPositional = false;
};

struct CommandOutline {
    std::string name;
    std::string summary;
    std::string examples;
    std::vector<OptionOutline> options; ///< positional arguments first

    [[nodiscard]] std::vector<OptionOutline> named() const;
    [[nodiscard]] std::vector<OptionOutline> positional() const;
};

/// The name of an option without its dashes, or of a positional argument.
std::string nameOf(const CLI::Option& option);

FileUse fileUseOf(const CLI::Option& option);

CommandOutline outlineOf(const CLI::App& command);

/// The whole program: what is common to all commands, then each of them.
struct ProgramOutline {
    CommandOutline common;
    std::vector<CommandOutline> commands;
};

ProgramOutline outlineOfProgram(const CLI::App& program);

} // namespace vexroc
