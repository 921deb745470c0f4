#include "cli/options/Offer.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace vexroc {

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
