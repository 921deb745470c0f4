#include "cli/commands/Commands.h"

#include <array>

namespace vexroc {

namespace {

constexpr std::array table{
    Command{"analyze", "Full analysis: groups, weights, comparisons, ROC and precision-recall curves", addAnalyze},
    Command{"auc", "Area under the ROC curve, with standard error, p value and interval", addAuc},
    Command{"benefit", "Net benefit of decisions at thresholds of risk", addBenefit},
    Command{"best", "Best cut-offs by several criteria, with all that they are measured by", addBest},
    Command{"columns", "What a table holds: columns, kinds, missing cells, distinct values", addColumns},
    Command{"compare", "Compare areas: tests on the same cases, or one test in two groups", addCompare},
    Command{"curve", "Points of the ROC curve", addCurve},
    Command{"partial", "Partial area under the ROC curve, over a band of rates, with interval", addPartial},
    Command{"points", "Operating points: sensitivity, PPV, ratios and more at cut-offs, with intervals", addPoints},
    Command{"pr", "Points of the precision-recall curve, or the area under it", addPr},
};

} // namespace

std::span<const Command> commands() { return table; }

} // namespace vexroc
