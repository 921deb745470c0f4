#pragma once

#include "cli/commands/Report.h"
#include "cli/system/Surroundings.h"

#include <functional>
#include <span>

namespace CLI {
class App;
}

namespace vexroc {

/// Runs a subcommand whose arguments are parsed. Throws Failure.
using Action = std::function<Report(const Surroundings& surroundings)>;

// Each adds its options to its part of the command line and returns what to run with them.
Action addAnalyze(CLI::App& command);
Action addAuc(CLI::App& command);
Action addBenefit(CLI::App& command);
Action addBest(CLI::App& command);
Action addColumns(CLI::App& command);
Action addCompare(CLI::App& command);
Action addCurve(CLI::App& command);
Action addPartial(CLI::App& command);
Action addPoints(CLI::App& command);
Action addPr(CLI::App& command);

/// A row of the table of commands.
struct Command {
    const char* name;
    const char* summary; ///< one line for the help
    Action (*add)(CLI::App& command);
};

/// All commands, in the order in which help shows them.
std::span<const Command> commands();

} // namespace vexroc
