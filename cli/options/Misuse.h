#pragma once

#include "cli/words/Failure.h"

#include <CLI/CLI.hpp>

namespace vexroc {

/// Throws a usage error for an option whose value is empty, or is the next option instead.
void requireValues(const CLI::App& program);

/// What to say of arguments that the parser turned away: what, where, and what to do.
Failure misuse(const CLI::App& program, const CLI::ParseError& error);

} // namespace vexroc
