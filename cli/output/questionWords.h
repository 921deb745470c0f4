#pragma once

#include "cli/output/Document.h"
#include "cli/study/Question.h"

#include <string>
#include <vector>

namespace vexroc {

// The parts of a question as documents say them.

std::vector<Fact> questionFacts(const Question& question, const CaseLabels& labels);
/// What splits the table in several analyses, and what a row stands for.
void addSlices(const Question& question, std::vector<std::string>& heading);
void addSlices(const Question& question, std::vector<Fact>& facts);
/// Adds which standard error, interval and confidence level the results have.
void addInference(std::vector<Fact>& facts, const char* standardError, const Question& question);
/// The word for programs: "nonparametric", "bi-negative exponential" or "DeLong".
const char* standardErrorWord(const Question& question);
/// "Standard error: nonparametric; Wald interval; confidence level 0.95"
std::string standardErrorHeading(const Question& question);
/// The same of the differences of tests on the same cases.
std::string pairedErrorHeading(const Question& question);
/// "pairwise" or "complete".
const char* pairedCasesWord(const Question& question);
std::string pairedCasesHeading(const Question& question);
constexpr const char* pairedErrorWord = "DeLong";

} // namespace vexroc
