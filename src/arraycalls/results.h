#pragma once

#include "host/VexMV.h"
#include "inference/TestAndInterval.h"
#include "summary/ValueWalk.h"
#include "vexrocproc/arraycalls.h"

/// The records of the array calls.
namespace ROCALG_920::arraycalls {

/// Without statistics: no counts, every value missing.
[[nodiscard]] inline auc_res missingArea() noexcept
{
    constexpr double missing = VexCommon_920::VexMV::Missing();
    return {0.0, 0.0, missing, missing, missing, missing, missing};
}

[[nodiscard]] inline auc_comparison_res missingComparison() noexcept
{
    constexpr double missing = VexCommon_920::VexMV::Missing();
    return {missingArea(), missingArea(), missing, missing, missing, missing, missing, missing};
}

[[nodiscard]] inline auc_res areaRecord(const StateCounts& cases, const AreaTest& test) noexcept
{
    auc_res res = missingArea();
    res.posCount = static_cast<double>(cases.positives);
    res.negCount = static_cast<double>(cases.negatives);
    res.area = test.area;
    res.stdError = test.stdError;
    res.asymptoticSig = test.significance;
    res.ciLower = test.lower;
    res.ciUpper = test.upper;
    return res;
}

[[nodiscard]] inline auc_comparison_res comparisonRecord(const auc_res& first, const auc_res& second,
                                                         double stdErrorDiff, double zCritical)
{
    auc_comparison_res res = missingComparison();
    res.first = first;
    res.second = second;
    res.areaDiff = areaDifference(first.area, second.area);
    res.stdErrorDiff = stdErrorDiff;
    const DifferenceTest test = testDifference(res.areaDiff, stdErrorDiff, zCritical);
    res.z = test.z;
    res.zSig = test.significance;
    res.ciLower = test.lower;
    res.ciUpper = test.upper;
    return res;
}

} // namespace ROCALG_920::arraycalls
