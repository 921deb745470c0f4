#pragma once

#include "inference/TestAndInterval.h"
#include "results/RunRecord.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/analysis.h"

/// Results in the form in which callers are told them.
namespace ROCALG_920::calls {

/// The chance that a standard normal variable lies at least as far from 0 as z, on either side; not a number for one.
struct TwoSidedP {
    double p;
    double log10; ///< decimal logarithm, also where p underflows
};
[[nodiscard]] TwoSidedP twoSidedP(double z) noexcept;

/// What the component says of a test in a group, but for columns, direction and the name of its interval.
[[nodiscard]] vexroc_record toldRecord(const RunRecord& record);
/// Another standard error of the same area, with the test and the interval that it makes.
void setArea(const AreaTest& test, vexroc_record& record);
/// What a standard error of 0 makes of test and interval is no result.
void dropWithoutError(vexroc_record& record);
/// The p of area and standard error.
void setP(vexroc_record& record);
/// The p of z.
void setP(vexroc_comparison& comparison);

/// What the component says of a difference, but for its records and its cases.
[[nodiscard]] vexroc_comparison toldComparison(const ROCComparisonOutStats& found);
/// The difference of the two areas, with a standard error and all that follows from it.
void setDifference(double stdError, double zCritical, vexroc_comparison& comparison);

} // namespace ROCALG_920::calls
