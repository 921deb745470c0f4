#include "cli/options/ManPage.h"

#include "cli/words/Failure.h"

#include <array>
#include <string_view>

namespace vexroc {

namespace {

/// Text as roff shows it: dashes are those of the keyboard, and no line starts a request.
std::string roff(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        if ((c == '.' || c == '\'') && (escaped.empty() || escaped.back() == '\n'))
            escaped += "\\&";
        if (c == '-')
            escaped += "\\-";
        else if (c == '\\')
            escaped += "\\e";
        else
            escaped += c;
    }
    return escaped;
}

std::string paragraph(const std::string& term, const std::string& text)
{
    return ".TP\n" + term + '\n' + roff(text) + '\n';
}

std::string term(const OptionOutline& option)
{
    const std::string name = option.isPositional ? option.name : "--" + option.name;
    return ".B " + roff(name)
        + (option.value.empty() || option.isPositional ? "" : " \\fI" + roff(option.value) + "\\fR");
}

std::string optionsOf(const CommandOutline& command)
{
    std::string text;
    for (const OptionOutline& option : command.options)
        text += paragraph(term(option), option.description + (option.required ? " (required)" : ""));
    return text;
}

std::string exitStatus()
{
    struct Status {
        ExitCode code;
        const char* meaning;
    };
    constexpr std::array statuses{
        Status{exitDone, "Done."},
        Status{exitNoResult, "The analysis came to no result; or a warning, with --strict."},
        Status{exitUsage, "Wrong use: unknown command or option, something missing, a value that cannot be."},
        Status{exitInput, "The data cannot be read or do not fit the question."},
        Status{exitOutput, "The results cannot be written."},
    };
    std::string text = ".SH EXIT STATUS\n";
    for (const Status& status : statuses)
        text += paragraph(".B " + std::to_string(status.code), status.meaning);
    return text + ".PP\nAn interrupted run removes what it began to write and ends by the signal.\n";
}

} // namespace

std::string manPageOf(const ProgramOutline& program, const std::string& version)
{
    std::string page = ".TH VEXROC 1 \"\" \"vexroc " + version + "\" \"User Commands\"\n.SH NAME\nvexroc \\- "
        + roff(program.common.summary)
        + "\n.SH SYNOPSIS\n.B vexroc\n.I COMMAND FILE\n"
          ".B \\-\\-state\n.I COLUMN=VALUE\n.B \\-\\-test\n.I COLUMN[,COLUMN...]\n[options]\n"
          ".SH DESCRIPTION\n"
          "Judges how well test variables separate positive from negative cases: ROC and precision\\-recall curves,\n"
          "areas with standard error, test and interval, and comparisons of areas.\n.SH COMMANDS\n";
    for (const CommandOutline& command : program.commands)
        page += ".SS vexroc " + roff(command.name) + '\n' + roff(command.summary) + ".\n" + optionsOf(command)
            + (command.examples.empty() ? "" : ".PP\n.nf\n" + roff(command.examples) + "\n.fi\n");
    return page + ".SH GENERAL OPTIONS\n" + optionsOf(program.common) + exitStatus() + ".SH ENVIRONMENT\n"
        + paragraph(".B NO_COLOR", "Set to anything, messages have no colour.") + ".SH EXAMPLES\n.nf\n"
        + roff(program.common.examples) + "\n.fi\n";
}

} // namespace vexroc
