#include "cli/Program.h"

#include "cli/options/CommandLine.h"
#include "cli/system/Messages.h"
#include "cli/system/OutputFile.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <istream>
#include <new>
#include <ostream>

namespace vexroc {

namespace {

void write(const std::string& text, std::ostream& out)
{
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.flush();
    if (!out)
        throw Failure(exitOutput, "cannot write the results: the output is full, closed or not writable");
}

/// The results of an analysis that came to some.
void deliver(const Report& report, std::ostream& out)
{
    if (!report.error.empty())
        return;
    if (report.file.empty())
        write(report.text, out);
    else
        OutputFile(report.file, report.text).commit();
}

ProgressDisplay displayFor(const GeneralOptions& options, const Terminal& terminal, std::ostream& err)
{
    switch (options.quiet ? ProgressMode::never : options.progress) {
    case ProgressMode::automatic:
        return {terminal.isTerminal ? &err : nullptr, ProgressForm::line, terminal.progressAfter};
    case ProgressMode::always: return {&err, ProgressForm::line, {}};
    case ProgressMode::json: return {&err, ProgressForm::json, {}};
    case ProgressMode::never: break;
    }
    return {};
}

void say(const Report& report, const Messages& messages)
{
    for (const std::string& note : report.notes)
        messages.note(note);
    for (const std::string& warning : report.warnings)
        messages.warning(warning);
}

/// The call in the words of a shell, as visible text.
std::string inShell(std::span<const std::string_view> args)
{
    std::string line = "vexroc";
    for (const std::string_view arg : args)
        line.append(" ").append(shellWord(arg));
    return line;
}

int run(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err,
        const Terminal& terminal)
{
    if (args.empty()) {
        err << shortHelp();
        return exitUsage;
    }
    const CommandRequest request = parseArguments(args);
    if (!request.action) {
        write(request.text, out);
        return exitDone;
    }
    const std::string command = inShell(args);
    const Report report =
        request.action({in, command, displayFor(request.general, terminal, err), request.general.quiet});
    deliver(report, out);
    if (!request.general.quiet)
        say(report, Messages(err, terminal.colour));
    if (!report.error.empty())
        throw analysisError(report.error);
    if (request.general.strict && !report.warnings.empty())
        throw analysisError("--strict: the analysis has warnings");
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
