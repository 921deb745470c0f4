#pragma once

#include "cli/output/Report.h"
#include "cli/study/Sample.h"

#include <vexrocproc/arraycalls.h>

#include <optional>
#include <string>
#include <vector>

namespace vexroc {

// What the subcommands have in common once a call has answered. `subject` is visible text: a test, a test in a group.

/// Throws an analysis error when a curve call answered with no rows at all: it ran out of memory.
void requireRows(const void* rows);
/// The same for an area, which then counts no case.
void requireAnalysed(const auc_res& result, const Cases& cases);

/// Why there is no curve of so many cases; nothing when there is one.
std::optional<std::string> reasonWithoutCurve(int positive, int negative);
/// Says which cases a curve stands on, and why it is empty when it is.
void addCurveNotes(const std::string& subject, const Cases& cases, std::vector<std::string>& notes);
/// An area and the cases it stands on.
struct AreaOutcome {
    int positive;
    int negative;
    double area;
    double stdError;
};
inline AreaOutcome outcomeOf(const Cases& cases, const auc_res& result)
{
    return {cases.positive, cases.negative, result.area, result.stdError};
}

/// Says why an area or its standard error is not there.
void addAreaNotes(const std::string& subject, const AreaOutcome& outcome, std::vector<std::string>& notes);
/// An area as its readers see it.
struct ShownArea {
    double area;
    double stdError;
    double upper; ///< bound
    bool smaller; ///< smaller test values are more positive
};
/// Says what a reader may overlook: nothing but the sample stands behind an interval without width, and an area clearly
/// below 0.5 asks for the other direction.
void addAreaCautions(const std::string& subject, const ShownArea& shown, std::vector<std::string>& notes);
/// The same for the difference of two areas.
void addDifferenceCautions(const std::string& subject, const auc_comparison_res& comparison,
                           std::vector<std::string>& notes);
/// Says where a standard error is not the bi-negative exponential one that was asked for.
void addBiNegativeNotes(const std::string& subject, const Cases& cases, std::vector<std::string>& notes);

/// Adds to the question which standard error and which confidence level the results have.
void addInference(std::vector<Fact>& question, const char* standardError, double level);
/// The word for programs: "nonparametric" or "bi-negative exponential".
const char* standardErrorWord(bool biNegative);
/// "Standard error: nonparametric; confidence level 0.95"
std::string standardErrorHeading(bool biNegative, double level);

} // namespace vexroc
