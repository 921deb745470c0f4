#include "cli/commands/Commands.h"

#include <array>

namespace vexroc {

namespace {

constexpr std::array table{
    Command{"analyze", "Full analysis: groups, weights, comparisons, ROC and precision-recall curves", addAnalyze},
    Command{"auc", "Area under the ROC curve, with standard error, p value and interval", addAuc},
    Command{"columns", "What a table holds: columns, kinds, missing cells, distinct values", addColumns},
    Command{"compare", "Compare areas: tests on the same cases, or one test in two groups", addCompare},
    Command{"curve", "Points of the ROC curve", addCurve},
    Command{"pr", "Points of the precision-recall curve", addPr},
};

} // namespace

std::span<const Command> commands() { return table; }

} // namespace vexroc
