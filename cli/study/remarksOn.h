#pragma once

#include "cli/study/Question.h"
#include "cli/study/Remarks.h"
#include "cli/study/Results.h"

#include <span>

namespace vexroc {

// What each command has to say that the runs behind its results do not say: of a run without a result.

void remarkOnAreas(const Results& results, Remarks& remarks);
/// Points, whose tables tell no numbers of cases.
void remarkOnCurves(const Results& results, Remarks& remarks);
/// Rows of cut-offs or thresholds, of all values: likewise.
void remarkOnRows(const Question& question, std::span<const ValueResults> values, Remarks& remarks);
/// Differences of areas.
void remarkOnDifferences(const Question& question, const Results& results, Remarks& remarks);
/// The analysis of the rows with one value.
void remarkOnValue(const Question& question, const ValueResults& value, Remarks& remarks);

} // namespace vexroc
