#pragma once

#include "cli/study/Question.h"
#include "cli/study/Remarks.h"
#include "cli/study/Results.h"

namespace vexroc {

// What each command has to say of its results. The ordinary case is silent: where a table tells it, a remark does not.

/// Areas, each with its interval.
void remarkOnAreas(const Question& question, const Results& results, Remarks& remarks);
/// Differences of areas, whose own intervals are not shown.
void remarkOnDifferences(const Question& question, const Results& results, Remarks& remarks);
/// Points of ROC or precision-recall curves.
void remarkOnCurves(const Question& question, const Results& results, Remarks& remarks);
/// A whole analysis, of all rows or of those with one value.
void remarkOnAnalysis(const Question& question, const ValueResults& value, Remarks& remarks);

} // namespace vexroc
