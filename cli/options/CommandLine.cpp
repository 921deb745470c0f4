#include "cli/options/CommandLine.h"

#include "cli/options/ConfigFile.h"
#include "cli/options/Misuse.h"
#include "cli/options/NamedFiles.h"
#include "cli/options/Offer.h"

#include <memory>

namespace vexroc {

namespace {

/// The help of a command ends with the options that every command takes.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_footer(const CLI::App* app) const override
    {
        const CLI::App* const parent = app->get_parent();
        if (parent == nullptr)
            return Formatter::make_footer(app);
        const std::string general = make_groups(parent, CLI::AppFormatMode::Sub);
        return general.substr(general.find_first_not_of('\n')) + '\n' + app->get_footer() + '\n';
    }
};

Invocation answer(std::string text) { return {"", std::move(text)}; }

} // namespace

CommandLine::CommandLine(const std::string& version, const std::string& examples)
    : app_("ROC analysis of a data file", "vexroc")
{
    app_.formatter(std::make_shared<HelpFormatter>());
    app_.set_version_flag("--version", version, "Print the versions of program and library");
    app_.require_subcommand(1);
    app_.fallthrough();
    app_.footer(examples);
    addGeneralOptions();
}

CLI::App& CommandLine::addCommand(const std::string& name, const std::string& summary)
{
    return *app_.add_subcommand(name, summary);
}

void CommandLine::addGeneralOptions()
{
    app_.option_defaults()->group("General options");
    app_.get_help_ptr()->group("General options")->description("Print this help and end")->configurable(false);
    app_.get_option("--version")->group("General options")->configurable(false);
    app_.config_formatter(std::make_shared<ConfigFile>(app_));
    app_.set_config("--config", "", "File of options, for what the arguments do not say")->type_name("FILE");
    app_.add_flag("--quiet", messages_.quiet, "No notes and progress; cautions and errors only");
    app_.add_flag("--strict", messages_.strict,
                  "A caution, or a result that is missing, ends the program with exit code 1");
    addChoice(app_, "--progress", progress_, {"auto", "never", "always"}, "When progress is told on standard error");
    app_.option_defaults()->group("Options"); // of the commands
}

void CommandLine::addHelpCommand()
{
    std::vector<std::string> names = commandNames(app_);
    help_ = app_.add_subcommand("help", "The help of a command, as its --help prints it");
    names.emplace_back("help");
    addChoice(*help_, "COMMAND", helped_, names, "The command; all of them when left out");
    help_->footer("Example: vexroc help auc");
}

/// A value is missing, too, where it is empty, as of a variable that is not set, and where the next option stands.
void CommandLine::requireValues()
{
    const auto fault = [this](const std::string& value) -> std::string {
        if (value.empty())
            return "the value is empty; leave out the option, or give it a value";
        const std::vector<CLI::App*> called = app_.get_subcommands();
        const bool isOption = hasOption(app_, value) || (!called.empty() && hasOption(*called.front(), value));
        return isOption ? "needs a value; the option " + value + " follows" : "";
    };
    std::vector<CLI::App*> parts = app_.get_subcommands([](const CLI::App*) { return true; });
    parts.push_back(&app_);
    for (CLI::App* const part : parts)
        for (CLI::Option* const option : part->get_options())
            if (option->get_expected_max() > 0)
                option->check(fault);
}

std::string CommandLine::helpOf(const std::string& command) const
{
    if (command.empty())
        return app_.get_formatter()->make_help(&app_, app_.get_name(), CLI::AppFormatMode::Normal);
    return app_.get_subcommand(command)->help(app_.get_name());
}

std::string CommandLine::shortHelp() const
{
    std::string help = "vexroc COMMAND FILE --state COLUMN=VALUE --test COLUMN[,COLUMN...]\n\n";
    for (const std::string& name : commandNames(app_))
        help += "  " + name + std::string(10 - name.size(), ' ') + app_.get_subcommand(name)->get_description() + '\n';
    return help + '\n' + app_.get_footer() + '\n';
}

Invocation CommandLine::parse(std::span<const std::string_view> args)
{
    addHelpCommand();
    requireValues();
    requireCommandName(app_, args.front());
    std::vector<std::string> reversed(args.rbegin(), args.rend()); // as the parser takes them
    try {
        app_.parse(reversed);
    } catch (const CLI::CallForHelp&) {
        return answer(app_.help());
    } catch (const CLI::CallForVersion& version) {
        return answer(std::string(version.what()) + '\n');
    } catch (const CLI::ParseError& error) {
        throw misuse(app_, error);
    }
    if (help_->parsed())
        return answer(helpOf(helped_));
    const CLI::App& command = *app_.get_subcommands().front();
    messages_.progress = progress_ == "auto" ? ProgressMode::automatic
        : progress_ == "never"               ? ProgressMode::never
                                             : ProgressMode::always;
    return {command.get_name(), "", messages_, soundFilesToWrite(command)};
}

} // namespace vexroc
