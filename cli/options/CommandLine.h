#pragma once

#include "cli/commands/Commands.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vexroc {

/// How progress is told.
enum class ProgressMode {
    automatic, ///< on a terminal, once a run takes a while
    never,
    always,
    json, ///< one object a line, for programs
};

/// The options that every command takes.
struct GeneralOptions {
    bool quiet = false;  ///< neither notes, warnings nor progress
    bool strict = false; ///< a warning becomes exitNoResult
    ProgressMode progress = ProgressMode::automatic;
};

/// What the arguments ask for: an action, or a text that answers at once.
struct CommandRequest {
    Action action;
    std::string text;
    GeneralOptions general;
};

/// What the program says when it is called with no arguments.
std::string shortHelp();

/// Understands the arguments behind the program's name; there is at least one. Throws a usage error.
CommandRequest parseArguments(std::span<const std::string_view> args);

} // namespace vexroc
