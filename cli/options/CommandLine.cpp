#include "cli/options/CommandLine.h"

#include "cli/options/Choice.h"
#include "cli/options/Completion.h"
#include "cli/options/ConfigFile.h"
#include "cli/options/ManPage.h"
#include "cli/options/Misuse.h"
#include "cli/options/NamedFiles.h"
#include "cli/options/Outline.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"
#include "version.h"

#include <vexrocproc/version.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <vector>

namespace vexroc {

namespace {

struct Command {
    const char* name;
    const char* summary;
    Action (*add)(CLI::App&);
};

constexpr std::array commands{
    Command{"analyze", "Full analysis: groups, weights, comparisons, ROC and precision-recall curves", addAnalyze},
    Command{"auc", "Area under the ROC curve, with standard error, significance and interval", addAuc},
    Command{"columns", "What a table holds: columns, kinds, missing cells, distinct values", addColumns},
    Command{"compare", "Compare areas: tests on the same cases, or one test in two groups", addCompare},
    Command{"curve", "Points of the ROC curve", addCurve},
    Command{"pr", "Points of the precision-recall curve", addPr},
};

constexpr std::string_view examples =
    "Examples:\n"
    "  vexroc auc data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
    "  vexroc compare data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
    "\nvexroc COMMAND --help explains a command.";

const std::vector<std::string> progressWords{"auto", "never", "always", "json"}; // as ProgressMode counts

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

/// The command line: one subcommand per row of the table, each with what it would run.
class CommandLine {
public:
    CommandLine() : app_("ROC analysis of a data file", "vexroc")
    {
        app_.formatter(std::make_shared<HelpFormatter>());
        app_.set_version_flag("--version", versionText(), "Print the versions of program and library");
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.footer(std::string(examples));
        addGeneralOptions();
        for (const Command& command : commands) {
            CLI::App* const part = app_.add_subcommand(command.name, command.summary);
            parts_.push_back({part, command.add(*part)});
        }
        addTextCommands();
    }

    CommandRequest parse(std::span<const std::string_view> args)
    {
        checkCommandName(args);
        std::vector<std::string> reversed(args.rbegin(), args.rend()); // as the parser takes them
        try {
            app_.parse(reversed);
        } catch (const CLI::CallForHelp&) {
            return answer(app_.help());
        } catch (const CLI::CallForVersion& version) {
            return answer(std::string(version.what()) + '\n');
        } catch (const CLI::ParseError& error) {
            requireValues(app_);
            throw misuse(app_, error);
        }
        requireValues(app_);
        if (completion_->parsed())
            return answer(completionScript(outlineOfProgram(app_), shell_));
        if (manPage_->parsed())
            return answer(manPageOf(outlineOfProgram(app_), std::string(programVersion)));
        if (printConfig_)
            return answer(app_.config_to_str());
        if (help_->parsed())
            return answer(helpOf(helped_));
        const auto part = std::ranges::find_if(parts_, [](const Part& each) { return each.app->parsed(); });
        requireSoundFiles(*part->app);
        general_.progress =
            static_cast<ProgressMode>(std::ranges::find(progressWords, progress_) - progressWords.begin());
        return {part->action, "", general_};
    }

private:
    struct Part {
        CLI::App* app;
        Action action;
    };

    static std::string versionText()
    {
        return "vexroc " + std::string(programVersion) + " (libvexrocproc920r " + vexrocproc_version() + ")";
    }

    /// Of a command, or of the program.
    [[nodiscard]] std::string helpOf(const std::string& command) const
    {
        if (command.empty())
            return app_.get_formatter()->make_help(&app_, app_.get_name(), CLI::AppFormatMode::Normal);
        return app_.get_subcommand(command)->help(app_.get_name());
    }

    static CommandRequest answer(std::string text) { return {{}, std::move(text), {}}; }

    void addGeneralOptions()
    {
        const auto general = [](CLI::Option* option) { option->group("General options"); };
        app_.get_help_ptr()->group("General options")->description("Print this help and end");
        app_.get_option("--version")->group("General options");
        app_.config_formatter(std::make_shared<ConfigFile>(app_));
        app_.allow_config_extras(CLI::config_extras_mode::error);
        general(
            app_.set_config("--config", "", "Options in TOML, for what the arguments do not say")->type_name("FILE"));
        general(app_.add_flag("--print-config", printConfig_, "Print the options in force as a --config file and end"));
        general(app_.add_flag("--quiet", general_.quiet, "No notes, warnings and progress; errors only"));
        general(app_.add_flag("--strict", general_.strict, "A warning ends the program with exit code 1"));
        general(addChoice(app_, "--progress", progress_, progressWords,
                          "When progress is told on standard error; json is one object a line"));
        for (const char* const name : {"--print-config", "--version"})
            app_.get_option(name)->configurable(false);
    }

    /// Commands that tell about the command line itself.
    void addTextCommands()
    {
        completion_ = app_.add_subcommand("completion", "Script that completes commands and options in a shell");
        addChoice(*completion_, "SHELL", shell_, completionShells(), "The shell that is to read it")->required();
        completion_->footer("Example: vexroc completion bash > ~/.local/share/bash-completion/completions/vexroc");
        manPage_ = app_.add_subcommand("man-page", "The manual page, for man");
        manPage_->footer("Example: vexroc man-page | man -l -");
        help_ = app_.add_subcommand("help", "The help of a command, as its --help prints it");
        addChoice(*help_, "COMMAND", helped_, commandNames(), "The command; all of them when left out");
        help_->footer("Example: vexroc help auc");
    }

    [[nodiscard]] std::vector<std::string> commandNames() const
    {
        std::vector<std::string> names;
        for (const CLI::App* const part : app_.get_subcommands([](const CLI::App*) { return true; }))
            names.push_back(part->get_name());
        return names;
    }

    void checkCommandName(std::span<const std::string_view> args) const
    {
        if (args.front().starts_with('-'))
            return;
        const std::vector<std::string> names = commandNames();
        if (std::ranges::find(names, args.front()) == names.end())
            throw usageError("no command " + inQuotes(args.front()) + didYouMean(args.front(), names)
                             + "; the commands are " + listed(names, names.size()));
    }

    CLI::App app_;
    std::vector<Part> parts_;
    CLI::App* completion_ = nullptr;
    CLI::App* manPage_ = nullptr;
    std::string shell_;
    CLI::App* help_ = nullptr;
    std::string helped_;
    GeneralOptions general_;
    std::string progress_ = progressWords.front();
    bool printConfig_ = false;
};

} // namespace

std::string shortHelp()
{
    std::string help = "vexroc COMMAND FILE --state COLUMN=VALUE --test COLUMN[,COLUMN...]\n\n";
    for (const Command& command : commands)
        help += std::string("  ").append(command.name).append(10 - std::string_view(command.name).size(), ' ')
            + command.summary + '\n';
    return help.append("\n").append(examples).append("\n");
}

CommandRequest parseArguments(std::span<const std::string_view> args) { return CommandLine().parse(args); }

} // namespace vexroc
