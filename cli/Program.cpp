#include "cli/Program.h"

#include "cli/commands/Commands.h"
#include "cli/options/CommandLine.h"
#include "cli/system/Messages.h"
#include "cli/system/OutputFiles.h"
#include "cli/words/Failure.h"

#include "cli/words/version.h"

#include <vexrocproc/version.h>

#include <istream>
#include <map>
#include <new>
#include <ostream>

namespace vexroc {

namespace {

constexpr const char* examples =
    "Examples:\n"
    "  vexroc auc data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
    "  vexroc compare data.csv --state diagnosis=malignant --test radius_mean,texture_mean\n"
    "\nvexroc COMMAND --help explains a command.";

std::string versions()
{
    return std::string("vexroc ").append(programVersion) + " (libvexrocproc920r " + vexrocproc_version() + ")";
}

void write(const std::string& text, std::ostream& out)
{
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.flush();
    if (!out)
        throw Failure(exitOutput, "cannot write the results: the output is full, closed or not writable");
}

/// The results of an analysis that came to some: first the files, so that a reader who sees results has them all.
void deliver(const Report& report, std::ostream& out)
{
    if (!report.error.empty())
        return;
    OutputFiles files;
    report.stageFiles(files);
    if (!report.file.empty())
        files.add(report.file, report.text);
    files.commit();
    if (report.file.empty())
        write(report.text, out);
}

ProgressDisplay displayFor(const MessageOptions& options, const Terminal& terminal, std::ostream& err)
{
    switch (options.quiet ? ProgressMode::never : options.progress) {
    case ProgressMode::automatic: return {terminal.isTerminal ? &err : nullptr, terminal.progressAfter};
    case ProgressMode::always: return {&err, {}};
    case ProgressMode::never: break;
    }
    return {};
}

void say(const Report& report, bool quiet, const Messages& messages)
{
    for (const Remark& caution : report.cautions)
        messages.caution(caution.text);
    if (!quiet)
        for (const Remark& note : report.notes)
            messages.note(note.text);
}

int run(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err,
        const Terminal& terminal)
{
    CommandLine commandLine(versions(), examples);
    std::map<std::string, Action> actions;
    for (const Command& command : commands())
        actions[command.name] = command.add(commandLine.addCommand(command.name, command.summary));
    if (args.empty()) {
        err << commandLine.shortHelp();
        return exitUsage;
    }
    const Invocation asked = commandLine.parse(args);
    if (asked.command.empty()) {
        write(asked.text, out);
        return exitDone;
    }
    for (const std::string& path : asked.written)
        OutputFile::requirePlace(path);
    const Report report = actions[asked.command](
        {in, CallLine(args), displayFor(asked.messages, terminal, err), asked.messages.quiet, terminal.lineWidth});
    deliver(report, out);
    say(report, asked.messages.quiet, Messages(err, terminal.colour));
    if (!report.error.empty())
        throw analysisError(report.error);
    if (asked.messages.strict && !report.cautions.empty())
        throw analysisError("--strict: there is a caution");
    return exitDone;
}

} // namespace

int runProgram(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err,
               Terminal terminal) noexcept
{
    const auto fail = [&](int exitCode, const char* message) {
        Messages(err, terminal.colour).error(message);
        return exitCode;
    };
    try {
        return run(args, in, out, err, terminal);
    } catch (const Failure& failure) {
        return fail(failure.exitCode(), failure.what());
    } catch (const std::bad_alloc&) {
        return fail(exitNoResult, "not enough memory");
    } catch (const std::exception& error) {
        return fail(exitNoResult, error.what());
    }
}

} // namespace vexroc
