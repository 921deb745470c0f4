#pragma once

#include "cli/commands/InputOptions.h"
#include "cli/input/ColumnSurvey.h"

#include <span>
#include <string>
#include <vector>

namespace vexroc {

/// The call that answers the commonest question to a table: how well its tests tell positive from negative cases.
struct NextCall {
    std::string command; ///< for a shell, as visible text
    std::string about;   ///< what it takes the table for
    bool isSure;         ///< do names and values of the columns say so?
    bool isComplete;     ///< does it run as it stands, or is it a form to fill in?
};

/// The likeliest first. The state is a column with two values that its name and its values make likely; the tests are
/// the columns of numbers that are no numbers of cases, and with more than two values where there are such. Those that
/// hold likely codes are asked about in a call of their own.
std::vector<NextCall> nextCalls(std::span<const ColumnFacts> columns, const InputOptions& options, const Input& input);

} // namespace vexroc
