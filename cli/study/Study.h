#pragma once

#include "cli/study/CaseLabels.h"
#include "cli/study/DataTable.h"
#include "cli/study/Question.h"
#include "cli/study/Results.h"
#include "cli/study/Run.h"

#include <memory>
#include <vector>

namespace vexroc {

/// Answers the question from a table that holds the columns it names: the one road of every command.
///
/// Cost: a run of the component orders each of its tests once, or twice where tests that are compared lack other cases.
/// Throws an input error where the data do not fit the question, the failure of a cancel when one was requested, and an
/// analysis error when memory runs out. That an analysis came to no result is told in the results.
Results study(const DataTable& table, const Question& question, const Watch& watch);

/// The results of each value of the column `by`.
struct StudyByValue {
    std::vector<ValueResults> values = {}; ///< ascending
    std::size_t missing = 0;               ///< rows without a value, in no analysis
    std::shared_ptr<const CaseLabels> labels = {};
};
/// The same question for the rows of each value of its column `by`.
StudyByValue studyByValue(DataTable table, const Question& question, const Watch& watch);

} // namespace vexroc
