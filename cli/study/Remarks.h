#pragma once

#include "cli/study/Results.h"

#include <optional>
#include <string>
#include <vector>

namespace vexroc {

// What is said beside numbers, one line each. `subject` is visible text: a test, a test in a group.

/// Why there is no curve of so many cases; nothing when there is one.
std::optional<std::string> reasonWithoutCurve(long long positive, long long negative);
/// Says which cases a curve stands on, and why it is empty when it is.
void addCurveNotes(const std::string& subject, const Area& area, std::vector<std::string>& notes);
/// Says why an area or its standard error is not there.
void addAreaNotes(const std::string& subject, const Area& area, std::vector<std::string>& notes);
/// Says what a reader may overlook: nothing but the sample stands behind an interval without width, and an area clearly
/// below 0.5 asks for the other direction.
void addAreaCautions(const std::string& subject, const Area& area, bool largerIsPositive,
                     std::vector<std::string>& notes);
/// The same for the difference of two areas.
void addDifferenceCautions(const std::string& subject, const Difference& difference, std::vector<std::string>& notes);
/// Says where a standard error is not the bi-negative exponential one that was asked for.
void addBiNegativeNotes(const std::string& subject, const Area& area, std::vector<std::string>& notes);
/// "12 rows read, 3 left out (missing state: 3), 'marker' missing in 2"
std::string rowNote(const RowCounts& rows);

} // namespace vexroc
