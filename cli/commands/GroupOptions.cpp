#include "cli/commands/GroupOptions.h"

#include "cli/commands/QuestionOptions.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace vexroc {

namespace {

constexpr const char* groupForm = "COLUMN[=VALUE,VALUE]";

/// --group COLUMN, and the values that stand with it or in --select.
Grouping parseGroup(const GroupOptions& options)
{
    // A column whose name holds an equal sign stands in double quotes, with or without values.
    const std::string withValues = options.group + (options.select.empty() ? "" : "=" + options.select);
    Assignment assignment = splitColumn(withValues, "--group", groupForm);
    Grouping grouping{.column = std::move(assignment.column), .by = Grouping::By::twoValues};
    if (assignment.values.empty())
        return grouping;
    grouping.by = Grouping::By::selected;
    grouping.selected = parseValues(assignment.values, options.select.empty() ? "--group" : "--select");
    if (grouping.selected.size() != 2)
        throw usageError(
            (options.select.empty() ? "--group " + inQuotes(options.group) : "--select " + inQuotes(options.select))
            + ": expected two values, such as female,male; put a value that holds a comma in double "
              "quotes");
    return grouping;
}

bool namesValues(const GroupOptions& options)
{
    return !options.group.empty() && !splitColumn(options.group, "--group", groupForm).values.empty();
}

void requireOneSplit(const GroupOptions& options)
{
    const bool split = options.midPoint || !options.select.empty() || !options.cut.empty();
    if (split && options.group.empty())
        throw usageError("--select, --cut and --mid-point split the cases by a column: name it with --group");
    const int ways =
        int(namesValues(options)) + int(!options.select.empty()) + int(!options.cut.empty()) + int(options.midPoint);
    if (ways > 1)
        throw usageError("--group COLUMN=VALUE,VALUE, --select, --cut and --mid-point are ways to split the cases: "
                         "give one of them");
}

} // namespace

void addGroupOptions(CLI::App& command, GroupOptions& options)
{
    command
        .add_option("--group", options.group,
                    "Column that splits the cases in two groups, and their values in this order; a column with two "
                    "values needs none")
        ->type_name(groupForm);
    command.add_option("--select", options.select, "The two values of the group column, where --group has none")
        ->type_name("VALUE,VALUE");
}

void addGroupRangeOptions(CLI::App& command, GroupOptions& options)
{
    command.add_option("--cut", options.cut, "Groups below this value of the group column, and from it on")
        ->type_name("VALUE");
    command.add_flag("--mid-point", options.midPoint, "Groups below and from the middle of the group column's range");
}

std::optional<Grouping> parseGrouping(const GroupOptions& options)
{
    requireOneSplit(options);
    if (options.group.empty())
        return std::nullopt;
    Grouping grouping = parseGroup(options);
    if (options.midPoint) {
        grouping.by = Grouping::By::midPoint;
    } else if (!options.cut.empty()) {
        grouping.by = Grouping::By::cut;
        const std::optional<double> cut = parseNumber(options.cut);
        if (!cut)
            throw usageError("--cut " + inQuotes(options.cut) + ": expected a number");
        grouping.cut = *cut;
    }
    return grouping;
}

} // namespace vexroc
