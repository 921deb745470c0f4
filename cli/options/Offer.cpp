#include "cli/options/Offer.h"

#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace vexroc {

CLI::Option* addChoice(CLI::App& command, const std::string& name, std::string& value,
                       const std::vector<std::string>& words, const std::string& description)
{
    const auto fault = [words](const std::string& word) -> std::string {
        if (std::ranges::find(words, word) != words.end())
            return "";
        return "no word " + inQuotes(word) + didYouMean(word, words) + "; the words are " + listed(words, words.size());
    };
    return command.add_option(name, value, description)->type_name(CLI::detail::join(words, "|"))->check(fault);
}

std::vector<std::string> commandNames(const CLI::App& program)
{
    std::vector<std::string> names;
    for (const CLI::App* const command : program.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

std::string nameOf(const CLI::Option& option)
{
    return option.get_positional() ? option.get_name(true) : option.get_lnames().front();
}

std::vector<std::string> optionNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::Option* const option : app.get_options())
        names.push_back(nameOf(*option));
    return names;
}

bool hasOption(const CLI::App& app, std::string_view text)
{
    return text.starts_with("--") && app.get_option_no_throw(std::string(text)) != nullptr;
}

} // namespace vexroc
