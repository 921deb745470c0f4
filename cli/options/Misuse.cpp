#include "cli/options/Misuse.h"

#include "cli/options/Outline.h"
#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

namespace vexroc {

namespace {

bool has(const CommandOutline& command, const std::string& option)
{
    const auto same = [&](const OptionOutline& each) { return !each.isPositional && "--" + each.name == option; };
    return std::ranges::any_of(command.options, same);
}

std::string needsValue(const CLI::Option& option)
{
    return option.get_name() + " needs a value: " + option.get_name() + " " + option.get_type_name();
}

/// The program, and the command that was called.
std::vector<const CLI::App*> partsOf(const CLI::App& program)
{
    std::vector<const CLI::App*> parts{&program};
    for (const CLI::App* const command : program.get_subcommands())
        parts.push_back(command);
    return parts;
}

class Explanation {
public:
    Explanation(const CLI::App& program, const CLI::ParseError& error)
        : program_(program), outline_(outlineOfProgram(program)), error_(error)
    {
        const std::vector<CLI::App*> called = program.get_subcommands();
        command_ = called.empty() ? nullptr : called.front();
    }

    [[nodiscard]] Failure failure() const
    {
        // A misspelt option first: what it leaves missing is only its consequence.
        if (const std::vector<std::string> rest = program_.remaining(true); !rest.empty())
            return unexpected(rest.front());
        if (command_ == nullptr)
            return usageError("no command: name one of " + commands() + helpHint());
        if (dynamic_cast<const CLI::FileError*>(&error_) != nullptr)
            return unreadable(program_.get_option("--config")->as<std::string>());
        for (const CLI::App* const part : partsOf(program_))
            for (const CLI::Option* const option : part->get_options())
                if (const std::string fault = faultOf(*option); !fault.empty())
                    return usageError(fault + helpHint());
        return usageError(std::string(error_.what()) + helpHint());
    }

private:
    [[nodiscard]] Failure unexpected(const std::string& argument) const
    {
        if (!argument.starts_with('-'))
            return usageError("unexpected argument " + inQuotes(argument) + helpHint());
        const std::string option = argument.substr(0, argument.find('='));
        const CommandOutline command = command_ == nullptr ? CommandOutline{} : outlineOf(*command_);
        if (has(command, option) || has(outline_.common, option))
            return usageError(inQuotes(option)
                              + " stands behind --, where nothing is an option; put -- behind the "
                                "options"
                              + helpHint());
        return usageError("no option " + inQuotes(argument) + elsewhere(option, command) + helpHint());
    }

    /// Where the option is, or what may have been meant.
    [[nodiscard]] std::string elsewhere(const std::string& option, const CommandOutline& command) const
    {
        std::vector<std::string> holders;
        for (const CommandOutline& each : outline_.commands)
            if (has(each, option))
                holders.push_back(each.name);
        if (!holders.empty())
            return (command_ == nullptr ? " without a command" : " in " + command.name) + "; "
                + listed(holders, holders.size()) + (holders.size() == 1 ? " has it" : " have it");
        std::vector<std::string> known;
        for (const CommandOutline* const each : {&command, &outline_.common})
            for (const OptionOutline& named : each->named())
                known.push_back("--" + named.name);
        return didYouMean(option, known);
    }

    /// What is wrong with the use of one option; empty when the error is not about it.
    [[nodiscard]] std::string faultOf(const CLI::Option& option) const
    {
        const std::string name = option.get_name();
        const bool isFlag = option.get_expected_max() == 0;
        const std::size_t most = static_cast<std::size_t>(option.get_items_expected_max());
        if (!isFlag && option.count() > most)
            return name + " is given " + std::to_string(option.count()) + " times; give it once";
        if (!std::string_view(error_.what()).starts_with(name + ": ") && !isAbout(name))
            return "";
        if (isFlag)
            return name + " takes no value: it is given, or left out (a file may say true or false)";
        if (dynamic_cast<const CLI::ArgumentMismatch*>(&error_) != nullptr)
            return needsValue(option);
        return "";
    }

    /// Does the parser name the option somewhere in its text?
    [[nodiscard]] bool isAbout(const std::string& name) const
    {
        const bool isConversion = dynamic_cast<const CLI::ConversionError*>(&error_) != nullptr;
        return isConversion && std::string_view(error_.what()).find(name) != std::string_view::npos;
    }

    static Failure unreadable(const std::string& path)
    {
        std::error_code ignored;
        const int reason = std::filesystem::is_directory(path, ignored) ? EISDIR
            : access(path.c_str(), R_OK) != 0                           ? errno
                                                                        : EIO;
        return inputError("cannot read the --config file " + visible(path) + ": "
                          + std::generic_category().message(reason));
    }

    [[nodiscard]] std::string commands() const
    {
        std::vector<std::string> names;
        std::ranges::transform(outline_.commands, std::back_inserter(names), &CommandOutline::name);
        return listed(names, names.size());
    }

    [[nodiscard]] std::string helpHint() const
    {
        return "; see vexroc " + (command_ == nullptr ? "" : command_->get_name() + " ") + "--help";
    }

    const CLI::App& program_;
    ProgramOutline outline_;
    const CLI::ParseError& error_;
    const CLI::App* command_;
};

} // namespace

void requireValues(const CLI::App& program)
{
    const ProgramOutline outline = outlineOfProgram(program);
    const std::vector<CLI::App*> called = program.get_subcommands();
    const CommandOutline command = called.empty() ? CommandOutline{} : outlineOf(*called.front());
    for (const CLI::App* const part : partsOf(program))
        for (const CLI::Option* const option : part->get_options())
            for (const std::string& value : option->results()) {
                if (value.empty())
                    throw usageError(option->get_name()
                                     + ": the value is empty; leave out the option, or give it a value");
                if (has(command, value) || has(outline.common, value))
                    throw usageError(needsValue(*option) + "; the option " + value + " follows");
            }
}

Failure misuse(const CLI::App& program, const CLI::ParseError& error) { return Explanation(program, error).failure(); }

} // namespace vexroc
