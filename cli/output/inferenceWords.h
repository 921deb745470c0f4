#pragma once

#include "cli/output/Document.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/study/CurveInference.h"

#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

// How answers beyond the areas were made, in words.

/// Interval and level, and of bootstraps replicates and seed, for programs.
void addIntervalFacts(std::vector<Fact>& facts, const Question& question, const std::string& interval);
/// "Wilson" or "Clopper-Pearson".
std::string proportionWord(const CurveOptions& how);
/// Is it the same in all curves? Then a heading tells it.
bool isOnePrevalence(const Analysis& analysis, const CurveOptions& how);
/// "at the prevalence 0.1", "at the sample's prevalence 0.3726"; without the number where it is not the same in all
/// curves.
std::string prevalenceWords(const Analysis& analysis, const CurveOptions& how);
/// The one that precision holds at: stated, or of these cases.
double prevalenceOf(const TestResult& test, const CurveOptions& how);
void addPrevalenceFact(std::vector<Fact>& facts, const CurveOptions& how);
/// "false positive rates 0 to 0.1 (specificity 0.9 to 1)"
std::string bandWords(const Band& band);

/// "radius_mean where sex = female and site = A", visible text; `value` is that of the column `by`.
std::string nameOf(const Question& question, const Area& area, std::string_view value = {});

/// A document about each curve, so far without tables: the heading begins with this line.
Document documentOn(const Analysis& analysis, std::string_view command, const std::string& title);

} // namespace vexroc
