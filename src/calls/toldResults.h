#pragma once

#include "inference/AreaInference.h"
#include "inference/OperatingPoint.h"
#include "inference/TestAndInterval.h"
#include "results/RunRecord.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/analysis.h"

#include <utility>

/// Results in the form in which callers are told them.
namespace ROCALG_920::calls {

/// What the component says of a test in a group, but for columns, direction and the name of its interval.
[[nodiscard]] vexroc_record toldRecord(const RunRecord& record);
/// Another standard error of the same area, with the test and the interval that it makes.
void setArea(const AreaTest& test, vexroc_record& record);
/// What a standard error of 0 makes of test and interval is no result.
void dropWithoutError(vexroc_record& record);
[[nodiscard]] const char* wordOf(AreaRule rule) noexcept;
[[nodiscard]] const char* wordOf(Alternative alternative) noexcept;
/// The limits of another rule.
void tellLimits(const AreaInference& found, vexroc_record& record);
/// The test of the area by another rule, with what the rules could have been asked.
void tellTest(const AreaInference& found, Alternative alternative, vexroc_record& record);
/// The test that records have always had: against 0.5 by the standard error, and none without.
void setPOfRecord(Alternative alternative, vexroc_record& record);
/// The p of z.
void setP(Alternative alternative, vexroc_comparison& comparison);

/// A row of a curve with its counts and, where they are not shares of these, its rates.
[[nodiscard]] vexroc_cut_off toldCutOff(const OperatingPoint& point);
[[nodiscard]] vexroc_cut_off toldCutOff(const OperatingPoint& point, const std::pair<double, double>& sensSpec);

/// What the component says of a difference, but for its records and its cases.
[[nodiscard]] vexroc_comparison toldComparison(const ROCComparisonOutStats& found, Alternative alternative);
/// The difference of the two areas, with a standard error and all that follows from it.
void setDifference(double stdError, double zCritical, Alternative alternative, vexroc_comparison& comparison);

} // namespace ROCALG_920::calls
