#pragma once

#include "cli/picture/DrawnCurve.h"
#include "cli/study/Question.h"

#include <optional>
#include <string>
#include <vector>

namespace vexroc {

/// Adds the curves of all tests; one without an area has none, and one that was named twice is drawn once. `subject`
/// stands before the name of each.
///
/// @param boxes  of the question whose confidence level they have; null for none
void addDrawnCurves(const Results& results, const std::string& subject, std::vector<DrawnCurve>& curves,
                    const Question* boxes = nullptr);

/// Adds the curve of one test, if it has an area, with a cut-off to mark.
void addDrawnCurve(const TestResult& test, const std::string& name, const std::optional<CutOff>& marked,
                   std::vector<DrawnCurve>& curves);

} // namespace vexroc
