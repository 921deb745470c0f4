#pragma once

#include "cli/output/Report.h"

#include <functional>
#include <iosfwd>

namespace CLI {
class App;
}

namespace vexroc {

/// Runs a subcommand whose arguments are parsed; reads standard input from the stream when asked to. Throws Failure.
using Action = std::function<Report(std::istream& standardInput)>;

// Each adds its options to its part of the command line and returns what to run with them.
Action addAuc(CLI::App& command);
Action addCompare(CLI::App& command);
Action addCurve(CLI::App& command);
Action addPr(CLI::App& command);

} // namespace vexroc
