#include "cli/Program.h"

#include "cli/Failure.h"
#include "cli/commands/Commands.h"
#include "cli/output/OutputFile.h"
#include "cli/text/Words.h"
#include "version.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <istream>
#include <new>
#include <ostream>

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
    Command{"compare", "Compare areas: tests on the same cases, or one test in two groups", addCompare},
    Command{"curve", "Points of the ROC curve", addCurve},
    Command{"pr", "Points of the precision-recall curve", addPr},
};

constexpr std::string_view examples =
    "Examples:\n"
    "  vexroc auc data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
    "  vexroc compare data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
    "\nvexroc COMMAND --help explains a command.";

std::string shortHelp()
{
    std::string help = "vexroc COMMAND FILE --state COLUMN=VALUE --test COLUMN[,COLUMN...]\n\n";
    for (const Command& command : commands)
        help += std::string("  ").append(command.name).append(10 - std::string_view(command.name).size(), ' ')
            + command.summary + '\n';
    return help.append("\n").append(examples).append("\n");
}

std::string didYouMean(std::string_view word, std::span<const std::string> candidates)
{
    const std::vector<std::string> near = nearWords(word, candidates);
    return near.empty() ? "" : "; did you mean " + listed(near, near.size()) + "?";
}

/// The command line: one subcommand per row of the table, each with what it would run.
class CommandLine {
public:
    CommandLine() : app_("ROC analysis of a data file", "vexroc")
    {
        app_.set_version_flag("--version", "vexroc " + std::string(programVersion), "Print the version");
        app_.require_subcommand(1);
        app_.footer(std::string(examples));
        for (const Command& command : commands) {
            CLI::App* const part = app_.add_subcommand(command.name, command.summary);
            parts_.push_back({part, command.add(*part)});
        }
    }

    /// What the arguments ask to run; nothing when they ask for a text, which is then in `text`.
    Action parse(std::span<const std::string_view> args, std::string& text)
    {
        checkCommandName(args);
        std::vector<std::string> reversed(args.rbegin(), args.rend()); // as the parser takes them
        try {
            app_.parse(reversed);
        } catch (const CLI::CallForHelp&) {
            text = app_.help();
            return {};
        } catch (const CLI::CallForVersion& version) {
            text = std::string(version.what()) + '\n';
            return {};
        } catch (const CLI::ParseError& error) {
            // A misspelt option first: what it leaves missing is only its consequence.
            if (const std::vector<std::string> rest = app_.remaining(true); !rest.empty())
                throw unexpected(rest.front());
            throw usageError(visible(error.what()) + helpHint());
        }
        return std::ranges::find_if(parts_, [](const Part& part) { return part.app->parsed(); })->action;
    }

private:
    struct Part {
        CLI::App* app;
        Action action;
    };

    void checkCommandName(std::span<const std::string_view> args) const
    {
        if (args.front().starts_with('-'))
            return;
        std::vector<std::string> names;
        for (const Command& command : commands)
            names.emplace_back(command.name);
        if (std::ranges::find(names, args.front()) == names.end())
            throw usageError("no command " + inQuotes(args.front()) + didYouMean(args.front(), names)
                             + "; the commands are " + listed(names, names.size()));
    }

    Failure unexpected(const std::string& argument) const
    {
        std::vector<std::string> options;
        for (const CLI::App* const part : app_.get_subcommands())
            for (const CLI::Option* const option : part->get_options())
                for (const std::string& name : option->get_lnames())
                    options.push_back("--" + name);
        if (argument.starts_with('-'))
            return usageError("no option " + inQuotes(argument) + didYouMean(argument, options) + helpHint());
        return usageError("unexpected argument " + inQuotes(argument) + helpHint());
    }

    std::string helpHint() const
    {
        const std::vector<CLI::App*> chosen = app_.get_subcommands();
        return "; see vexroc " + (chosen.empty() ? "" : chosen.front()->get_name() + " ") + "--help";
    }

    CLI::App app_;
    std::vector<Part> parts_;
};

void write(const std::string& text, std::ostream& out)
{
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.flush();
    if (!out)
        throw Failure(exitOutput, "cannot write the results: the output is full, closed or not writable");
}

int run(std::span<const std::string_view> args, const Session& session, std::ostream& out, std::ostream& err)
{
    if (args.empty()) {
        err << shortHelp();
        return exitUsage;
    }
    Report report;
    CommandLine commandLine;
    if (const Action action = commandLine.parse(args, report.text))
        report = action(session);
    if (report.file.empty())
        write(report.text, out);
    else
        OutputFile(report.file, report.text).commit();
    for (const std::string& note : report.notes)
        err << "vexroc: note: " << note << '\n';
    for (const std::string& warning : report.warnings)
        err << "vexroc: warning: " << warning << '\n';
    if (!report.error.empty())
        throw analysisError(report.error);
    return exitDone;
}

/// The call in the words of a shell, as visible text.
std::string inShell(std::span<const std::string_view> args)
{
    std::string line = "vexroc";
    for (const std::string_view arg : args)
        line += " " + visible(shellWord(arg));
    return line;
}

} // namespace

int runProgram(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err,
               ProgressDisplay progress) noexcept
{
    const auto fail = [&err](int exitCode, const char* message) {
        err << "vexroc: error: " << message << '\n';
        return exitCode;
    };
    try {
        const std::string command = inShell(args);
        return run(args, {in, command, progress.shown ? &err : nullptr, progress.after}, out, err);
    } catch (const Failure& failure) {
        return fail(failure.exitCode(), failure.what());
    } catch (const std::bad_alloc&) {
        return fail(exitNoResult, "not enough memory");
    } catch (const std::exception& error) {
        return fail(exitNoResult, error.what());
    }
}

} // namespace vexroc
