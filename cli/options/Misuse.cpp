#include "cli/options/Misuse.h"

#include "cli/options/Offer.h"
#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vexroc {

namespace {

/// The command that was called; the program where none was.
const CLI::App& calledPart(const CLI::App& program)
{
    const std::vector<CLI::App*> called = program.get_subcommands();
    return called.empty() ? program : *called.front();
}

/// Which commands have an option; where none has it, the nearest options of the one that was called.
std::string whereOrWhat(const CLI::App& program, const std::string& option)
{
    std::vector<std::string> holders = commandNames(program);
    std::erase_if(holders, [&](const std::string& name) { return !hasOption(*program.get_subcommand(name), option); });
    if (!holders.empty())
        return "; " + listed(holders, holders.size()) + (holders.size() == 1 ? " has it" : " have it");
    std::vector<std::string> known = optionNames(calledPart(program));
    for (std::string& name : optionNames(program))
        known.push_back(std::move(name));
    for (std::string& name : known)
        name.insert(0, "--");
    return didYouMean(option, known);
}

std::string noCommand(const CLI::App& program, std::string_view word)
{
    const std::vector<std::string> names = commandNames(program);
    return "no command " + inQuotes(word) + didYouMean(word, names) + "; the commands are "
        + listed(names, names.size());
}

std::string unexpected(const CLI::App& program, const std::string& argument)
{
    const CLI::App& called = calledPart(program);
    const bool hasCommand = &called != &program;
    if (!argument.starts_with('-'))
        return hasCommand ? "unexpected argument " + inQuotes(argument) : noCommand(program, argument);
    const std::string option = argument.substr(0, argument.find('='));
    if (hasOption(called, option) || hasOption(program, option))
        return inQuotes(option) + " stands behind --, where nothing is an option; put -- behind the options";
    return "no option " + inQuotes(argument) + (hasCommand ? " in " + called.get_name() : "")
        + whereOrWhat(program, option);
}

} // namespace

void requireCommandName(const CLI::App& program, std::string_view firstArgument)
{
    const std::vector<std::string> names = commandNames(program);
    if (!firstArgument.starts_with('-') && std::ranges::find(names, firstArgument) == names.end())
        throw usageError(noCommand(program, firstArgument));
}

Failure misuse(const CLI::App& program, const CLI::ParseError& error)
{
    const CLI::App& called = calledPart(program);
    const bool hasCommand = &called != &program;
    const std::string hint = "; see vexroc " + (hasCommand ? called.get_name() + " " : "") + "--help";
    // A misspelt option first: what it leaves missing is only its consequence.
    if (const std::vector<std::string> rest = program.remaining(true); !rest.empty())
        return usageError(unexpected(program, rest.front()) + hint);
    if (!hasCommand) {
        const std::vector<std::string> names = commandNames(program);
        return usageError("no command: name one of " + listed(names, names.size()) + hint);
    }
    if (dynamic_cast<const CLI::FileError*>(&error) != nullptr)
        return inputError("cannot read the --config file " + visible(program.get_option("--config")->as<std::string>())
                          + ": no such file, or none that may be read");
    const bool isVisible = dynamic_cast<const CLI::ValidationError*>(&error) != nullptr; // in words of this program
    return usageError((isVisible ? error.what() : visible(error.what())) + hint);
}

} // namespace vexroc
