#pragma once

#include "cli/output/Document.h"
#include "cli/study/Question.h"

#include <string>
#include <vector>

namespace vexroc {

// The parts of a question as documents say them.

std::vector<Fact> questionFacts(const Question& question, const CaseLabels& labels);
/// Adds which standard error and which confidence level the results have.
void addInference(std::vector<Fact>& facts, const char* standardError, double level);
/// The word for programs: "nonparametric" or "bi-negative exponential".
const char* standardErrorWord(bool biNegative);
/// "Standard error: nonparametric; confidence level 0.95"
std::string standardErrorHeading(bool biNegative, double level);
/// "Standard errors: DeLong; confidence level 0.95"
std::string pairedErrorHeading(double level);
constexpr const char* pairedErrorWord = "DeLong";

} // namespace vexroc
