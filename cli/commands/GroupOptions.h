#pragma once

#include "cli/study/Question.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace vexroc {

/// The options that split the cases in two groups, as typed; every command that has them reads them alike.
struct GroupOptions {
    std::string group;
    std::string select;
    std::string cut;
    bool midPoint = false;
};

/// --group and --select.
void addGroupOptions(CLI::App& command, GroupOptions& options);
/// --cut and --mid-point, for columns of numbers.
void addGroupRangeOptions(CLI::App& command, GroupOptions& options);

/// Nothing without a group. Throws a usage error that names the options that do not fit.
std::optional<Grouping> parseGrouping(const GroupOptions& options);

} // namespace vexroc
