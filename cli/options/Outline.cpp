#include "cli/options/Outline.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace vexroc {

namespace {

/// A choice between words is shown as "text|csv".
std::vector<std::string> wordsOf(const std::string& value)
{
    return value.find('|') == std::string::npos ? std::vector<std::string>{} : CLI::detail::split(value, '|');
}

OptionOutline outlineOf(const CLI::Option& option)
{
    const bool isPositional = option.get_positional();
    const bool isFlag = option.get_expected_max() == 0;
    const std::string value = isFlag ? "" : option.get_type_name();
    return {.name = nameOf(option),
            .value = value,
            .words = wordsOf(value),
            .description = option.get_description(),
            .file = fileUseOf(option),
            .required = option.get_required(),
            .isPositional = isPositional};
}

std::vector<OptionOutline> selected(const std::vector<OptionOutline>& options, bool isPositional)
{
    std::vector<OptionOutline> some;
    std::ranges::copy_if(options, std::back_inserter(some),
                         [=](const OptionOutline& option) { return option.isPositional == isPositional; });
    return some;
}

} // namespace

std::vector<OptionOutline> CommandOutline::named() const { return selected(options, false); }

std::vector<OptionOutline> CommandOutline::positional() const { return selected(options, true); }

std::string nameOf(const CLI::Option& option)
{
    return option.get_positional() ? option.get_name(true) : option.get_lnames().front();
}

/// An option whose value stands as FILE names a file to write, unless it is one of those that read.
FileUse fileUseOf(const CLI::Option& option)
{
    constexpr std::array<std::string_view, 3> reading{"FILE", "sqlite", "config"};
    const std::string name = nameOf(option);
    if (std::ranges::find(reading, name) != reading.end())
        return FileUse::read;
    const bool namesFile = option.get_expected_max() > 0 && option.get_type_name().starts_with("FILE");
    return namesFile ? FileUse::written : FileUse::none;
}

CommandOutline outlineOf(const CLI::App& command)
{
    CommandOutline outline{command.get_name(), command.get_description(), command.get_footer(), {}};
    const bool isPart = command.get_parent() != nullptr;
    for (const CLI::Option* const option : command.get_options())
        if (!isPart || option != command.get_help_ptr()) // the program's --help stands for that of its commands
            outline.options.push_back(outlineOf(*option));
    std::stable_partition(outline.options.begin(), outline.options.end(),
                          [](const OptionOutline& option) { return option.isPositional; });
    return outline;
}

ProgramOutline outlineOfProgram(const CLI::App& program)
{
    ProgramOutline outline{outlineOf(program), {}};
    for (const CLI::App* const command : program.get_subcommands([](const CLI::App*) { return true; }))
        outline.commands.push_back(outlineOf(*command));
    return outline;
}

} // namespace vexroc
