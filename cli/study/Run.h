#pragma once

#include "cli/study/Question.h"
#include "cli/study/Results.h"
#include "cli/study/Watch.h"

#include <span>
#include <string>
#include <vector>

namespace vexroc {

/// The cases of one run of the component, as parallel columns that outlive it; NaN where a value is missing.
struct RunCases {
    std::span<const double> state;                ///< 1 positive, 0 negative; others take no part
    std::span<const double> group = {};           ///< empty without groups
    std::span<const double> weight = {};          ///< empty without weights
    std::span<const double> count = {};           ///< likewise: of cases that a row stands for
    std::span<const std::string> groupWords = {}; ///< what codes of the group stand for; empty where it holds numbers
    std::vector<std::string> tests = {};          ///< names, as asked: a test may be named twice
    std::vector<std::span<const double>> values = {}; ///< parallel to tests
};

/// Runs the component once over all tests, with the settings of the question, and says what came of it.
/// Throws the failure of a cancel when one was requested, a usage error for what does not go together, an analysis
/// error when memory runs out.
Results run(const RunCases& cases, const Question& question, Comparison comparison, const Watch& watch);

} // namespace vexroc
