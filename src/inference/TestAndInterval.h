#pragma once

#include "host/VexMV.h"

#include <utility>

/// The steps from an estimate and its standard error to a test and an interval, shared by areas and comparisons.
/// Whatever depends on a missing value is the missing value.
namespace ROCALG_920 {

/// Standard normal quantile of a two-sided interval: 1.959964 for the confidence level 0.95.
[[nodiscard]] double criticalValue(double confidenceLevel);

/// (1 - phi) + (1 - phi) for phi the standard normal distribution function at |statistic|.
[[nodiscard]] double twoSidedSignificance(double statistic);

/// (estimate - stdError * zCritical, estimate + stdError * zCritical), not clipped.
[[nodiscard]] std::pair<double, double> confidenceInterval(double estimate, double stdError, double zCritical);

/// Root of a variance.
[[nodiscard]] double stdErrorOfVariance(double variance);

/// One area with its test against the area 0.5 and its interval; missing where nothing was computed.
struct AreaTest {
    double area = VexCommon_920::VexMV::Missing();
    double giniIndex = VexCommon_920::VexMV::Missing(); ///< 2 * area - 1
    double stdError = VexCommon_920::VexMV::Missing();
    double significance = VexCommon_920::VexMV::Missing();
    double lower = VexCommon_920::VexMV::Missing();
    double upper = VexCommon_920::VexMV::Missing();
};
[[nodiscard]] AreaTest testArea(double area, double stdError, double zCritical);

/// First area minus second area.
[[nodiscard]] double areaDifference(double area1, double area2);

/// Standard error of the difference of two independent areas.
[[nodiscard]] double independentStdError(double stdError1, double stdError2);

/// Standard error of the difference of two areas with a covariance: root of variance1 + variance2 - 2 * covariance.
/// A radicand that rounding left within a few units below zero counts as zero; further below, the root is not a
/// number.
[[nodiscard]] double pairedStdError(double variance1, double variance2, double covariance);

/// z of a difference (0 when the difference is exactly 0), its two-sided significance and interval.
struct DifferenceTest {
    double z = VexCommon_920::VexMV::Missing();
    double significance = VexCommon_920::VexMV::Missing();
    double lower = VexCommon_920::VexMV::Missing();
    double upper = VexCommon_920::VexMV::Missing();
};
[[nodiscard]] DifferenceTest testDifference(double difference, double stdError, double zCritical);

} // namespace ROCALG_920
