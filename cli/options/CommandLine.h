#pragma once

#include <CLI/CLI.hpp>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// When progress is told.
enum class ProgressMode {
    automatic, ///< on a terminal, once a run takes a while
    never,
    always,
};

/// The options about what is said beside the results.
struct MessageOptions {
    bool quiet = false;  ///< neither notes nor progress
    bool strict = false; ///< a warning becomes exitNoResult
    ProgressMode progress = ProgressMode::automatic;
};

/// What the arguments ask for: to run a command, or a text that answers at once.
struct Invocation {
    std::string command; ///< empty where the text is all
    std::string text;
    MessageOptions messages = {};
    std::vector<std::string> written = {}; ///< the files that the command is to write
};

/// The command line of the program: the options of all commands, and a part for each command.
class CommandLine {
public:
    /// `version` is what --version prints, `examples` end the help of the program.
    CommandLine(const std::string& version, const std::string& examples);

    /// A command without options, for the caller to add them; it lives as long as this.
    CLI::App& addCommand(const std::string& name, const std::string& summary);

    /// What the program says when it is called with no arguments.
    [[nodiscard]] std::string shortHelp() const;

    /// Understands the arguments behind the program's name; there is at least one. To be called once, behind the last
    /// addCommand. Throws a usage error; an input error for a --config file that cannot be read.
    Invocation parse(std::span<const std::string_view> args);

private:
    void addGeneralOptions();
    void addHelpCommand();
    void requireValues();
    [[nodiscard]] std::string helpOf(const std::string& command) const;

    CLI::App app_;
    CLI::App* help_ = nullptr;
    std::string helped_;
    MessageOptions messages_;
    std::string progress_ = "auto";
};

} // namespace vexroc
