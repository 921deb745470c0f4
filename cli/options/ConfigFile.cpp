#include "cli/options/ConfigFile.h"

#include "cli/options/Outline.h"
#include "cli/words/Failure.h"
#include "cli/words/NearWords.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <toml++/toml.h>

#include <algorithm>
#include <iterator>
#include <sstream>

namespace vexroc {

namespace {

using Items = std::vector<CLI::ConfigItem>;
using Options = std::vector<const CLI::Option*>;

[[noreturn]] void fail(const toml::source_region& where, const std::string& what)
{
    throw usageError("--config: line " + std::to_string(where.begin.line) + ": " + what);
}

/// A value as an argument spells it.
std::string argumentOf(const toml::node& node, const std::string& key)
{
    if (const auto* const text = node.as_string())
        return text->get();
    if (const auto* const whole = node.as_integer())
        return std::to_string(whole->get());
    if (const auto* const number = node.as_floating_point())
        return shortest(number->get());
    if (const auto* const flag = node.as_boolean())
        return flag->get() ? "true" : "false";
    fail(node.source(), inQuotes(key) + ": expected a text, a number, true or false, or a list of them");
}

std::vector<std::string> argumentsOf(const toml::node& node, const std::string& key)
{
    const toml::array* const list = node.as_array();
    if (list == nullptr)
        return {argumentOf(node, key)};
    std::vector<std::string> arguments;
    for (const toml::node& each : *list)
        arguments.push_back(argumentOf(each, key));
    return arguments;
}

/// The keys that a file may use for the options of one command, or for those of all.
std::vector<std::string> keysOf(const CommandOutline& outline)
{
    std::vector<std::string> keys;
    for (const OptionOutline& option : outline.options)
        keys.push_back(option.name);
    return keys;
}

bool contains(const std::vector<std::string>& words, std::string_view word)
{
    return std::ranges::find(words, word) != words.end();
}

std::vector<std::string> keysIn(const Items& items)
{
    std::vector<std::string> keys;
    std::ranges::transform(items, std::back_inserter(keys), &CLI::ConfigItem::name);
    return keys;
}

/// Where the data are is one answer, though several options give it: what goes first replaces all of it.
void dropReplaced(Items& items, const std::vector<std::string>& given)
{
    struct Replacement {
        std::vector<std::string> given; ///< any of them
        std::vector<std::string> replaced;
    };
    static const std::vector<Replacement> replacements{
        {{"FILE", "sqlite", "postgres"}, {"FILE", "sqlite", "postgres", "table", "query"}},
        {{"sqlite", "postgres"}, {"delimiter", "decimal"}},
        {{"table", "query"}, {"table", "query"}},
    };
    const auto isGiven = [&](const std::string& key) { return contains(given, key); };
    for (const Replacement& each : replacements)
        if (std::ranges::any_of(each.given, isGiven))
            std::erase_if(items, [&](const CLI::ConfigItem& item) { return contains(each.replaced, item.name); });
}

/// Reads one file for one of the commands.
class Reading {
public:
    Reading(const CLI::App& program, const CLI::App* command)
        : outline_(outlineOfProgram(program)), command_(command == nullptr ? "" : command->get_name())
    {
        for (const CLI::Option* const option : command == nullptr ? Options{} : command->get_options())
            if (option->count() > 0)
                arguments_.push_back(nameOf(*option));
    }

    Items items(const toml::table& file)
    {
        Items specific;
        Items common;
        for (const auto& [key, node] : file) {
            if (const toml::table* const section = node.as_table())
                addSection(std::string(key.str()), *section, node.source(), specific);
            else
                addCommon(std::string(key.str()), node, common);
        }
        dropReplaced(specific, arguments_);
        dropReplaced(common, arguments_);
        dropReplaced(common, keysIn(specific));
        specific.insert(specific.end(), common.begin(), common.end()); // the first to name an option sets it
        return specific;
    }

private:
    void addSection(const std::string& name, const toml::table& section, const toml::source_region& where, Items& items)
    {
        const auto command = std::ranges::find(outline_.commands, name, &CommandOutline::name);
        if (command == outline_.commands.end())
            fail(where, "no command " + inQuotes(name));
        const std::vector<std::string> keys = keysOf(*command);
        for (const auto& [key, node] : section) {
            const std::string option(key.str());
            if (!contains(keys, option))
                fail(node.source(), name + " has no option " + inQuotes(option) + didYouMean(option, keys));
            if (name == command_)
                items.push_back({{name}, option, argumentsOf(node, option)});
        }
    }

    /// An option of the program, or of some commands: then it is for the one that is called, if that has it.
    void addCommon(const std::string& key, const toml::node& node, Items& items)
    {
        const std::vector<std::string> programKeys = keysOf(outline_.common);
        if (contains({"config", "help", "print-config", "version"}, key))
            fail(node.source(), inQuotes(key) + " is not allowed in a file; it is for the command line");
        if (contains(programKeys, key)) {
            items.push_back({{}, key, argumentsOf(node, key)});
            return;
        }
        std::vector<std::string> all = programKeys;
        for (const CommandOutline& command : outline_.commands) {
            const std::vector<std::string> keys = keysOf(command);
            if (command.name == command_ && contains(keys, key))
                items.push_back({{command_}, key, argumentsOf(node, key)});
            all.insert(all.end(), keys.begin(), keys.end());
        }
        if (!contains(all, key))
            fail(node.source(), "no option " + inQuotes(key) + didYouMean(key, all));
    }

    ProgramOutline outline_;
    std::string command_;
    std::vector<std::string> arguments_; ///< options that the arguments give
};

toml::array listOf(const std::vector<std::string>& values)
{
    toml::array list;
    for (const std::string& value : values)
        list.push_back(value);
    return list;
}

/// The options that were set, by arguments or by a file.
toml::table given(const CLI::App& command)
{
    toml::table table;
    for (const CLI::Option* const option : command.get_options()) {
        if (option->count() == 0 || !option->get_configurable())
            continue;
        if (option->get_expected_max() == 0)
            table.insert(nameOf(*option), option->as<bool>());
        else if (option->count() == 1)
            table.insert(nameOf(*option), option->results().front());
        else
            table.insert(nameOf(*option), listOf(option->results()));
    }
    return table;
}

} // namespace

Items ConfigFile::from_config(std::istream& input) const
{
    const std::vector<CLI::App*> called = program_.get_subcommands();
    try {
        return Reading(program_, called.empty() ? nullptr : called.front()).items(toml::parse(input));
    } catch (const toml::parse_error& error) {
        fail(error.source(), std::string(error.description()));
    }
}

std::string ConfigFile::to_config(const CLI::App* program, bool, bool, std::string) const
{
    toml::table file = given(*program);
    for (const CLI::App* const command : program->get_subcommands())
        file.insert(command->get_name(), given(*command));
    std::ostringstream text;
    text << file << '\n';
    return text.str();
}

} // namespace vexroc
