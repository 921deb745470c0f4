#pragma once

#include "cli/words/Failure.h"

#include <CLI/CLI.hpp>

#include <string_view>

namespace vexroc {

/// Throws a usage error where the first argument is neither an option nor a command.
void requireCommandName(const CLI::App& program, std::string_view firstArgument);

/// What to say of arguments that the parser turned away: its own words, or, where it only says that an argument was not
/// expected, what may have been meant. A usage error; for a --config file that cannot be read, an input error.
Failure misuse(const CLI::App& program, const CLI::ParseError& error);

} // namespace vexroc
