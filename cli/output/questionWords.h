#pragma once

#include "cli/output/Document.h"
#include "cli/study/Question.h"
#include "cli/study/Results.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

// The parts of a question as documents say them.

std::vector<Fact> questionFacts(const Question& question, const CaseLabels& labels);
/// What splits the table in several analyses, and what a row stands for.
void addSlices(const Question& question, std::vector<std::string>& heading);
void addSlices(const Question& question, std::vector<Fact>& facts);
/// "DeLong", of the words of analysis.h for whose standard errors they are.
std::string errorInWords(std::string_view error);
/// "percentile bootstrap", of the words of analysis.h and inference.h.
std::string intervalInWords(std::string_view interval);
/// "Interval: bca, level 0.95, 1999 replicates, seed 1".
std::string intervalHeading(const Inference& asked, std::string_view interval);

/// What made the numbers of the areas of a document, where that may differ from one to the next.
class AreaMethods {
public:
    void add(const Results& results);
    [[nodiscard]] bool areOfSeveralTests() const noexcept { return tests_.size() > 1; }
    [[nodiscard]] bool areOfSeveralIntervals() const noexcept { return intervals_.size() > 1; }
    /// Are all p values exact?
    [[nodiscard]] bool areExact() const { return tests_.size() == 1 && tests_.contains("mann-whitney-exact"); }

private:
    std::set<std::string> tests_;
    std::set<std::string> intervals_;
};

/// Adds how areas are inferred, and with which confidence level.
void addAreaFacts(std::vector<Fact>& facts, const Question& question);
/// The same of differences.
void addDifferenceFacts(std::vector<Fact>& facts, const Question& question);
/// "Interval: score, level 0.95; p: Mann-Whitney; standard error: DeLong"
std::string areaHeading(const Question& question, const AreaMethods& methods);
/// "95 % score interval", for legends.
std::string intervalOfAreas(const Inference& inference);
/// "Interval: Wald, level 0.95; p: Wald; standard error: DeLong"
std::string differenceHeading(const Question& question);
/// The same behind "Interval of differences: ".
std::string differenceWords(const Question& question);
/// "pairwise" or "complete".
const char* pairedCasesWord(const Question& question);
std::string pairedCasesHeading(const Question& question);

} // namespace vexroc
