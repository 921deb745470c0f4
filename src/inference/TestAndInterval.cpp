#include "inference/TestAndInterval.h"

#include "host/VexDistFun.h"

#include <cmath>
#include <limits>

namespace ROCALG_920 {

using VexCommon_920::VexMV;
using VexMath_920::VexDistFun;

namespace {

template <class... Values>
bool anyMissing(Values... values)
{
    return (VexMV::IsMissing(values) || ...);
}

} // namespace

double criticalValue(double confidenceLevel)
{
    return VexDistFun::IdfNorm((1 - confidenceLevel) * (-0.5) + 1, 0.0, 1.0);
}

double twoSidedSignificance(double statistic)
{
    if (anyMissing(statistic))
        return VexMV::Missing();
    const double phi = VexDistFun::CdfStdNorm(std::abs(statistic));
    return (1 - phi) + (1 - phi);
}

std::pair<double, double> confidenceInterval(double estimate, double stdError, double zCritical)
{
    if (anyMissing(estimate, stdError, zCritical))
        return {VexMV::Missing(), VexMV::Missing()};
    const double half = stdError == 0 ? 0.0 : stdError * zCritical; // exact: nothing to widen, even by infinity
    return {estimate - half, estimate + half};
}

double stdErrorOfVariance(double variance) { return anyMissing(variance) ? VexMV::Missing() : std::sqrt(variance); }

AreaTest testArea(double area, double stdError, double zCritical)
{
    constexpr double nullArea = 0.5;
    const auto [lower, upper] = confidenceInterval(area, stdError, zCritical);
    return {area, area + area - 1, stdError, twoSidedSignificance((area - nullArea) / stdError), lower, upper};
}

double areaDifference(double area1, double area2)
{
    return anyMissing(area1, area2) ? VexMV::Missing() : area1 - area2;
}

double independentStdError(double stdError1, double stdError2)
{
    if (anyMissing(stdError1, stdError2))
        return VexMV::Missing();
    return std::sqrt(stdError2 * stdError2 + stdError1 * stdError1);
}

double pairedStdError(double variance1, double variance2, double covariance)
{
    if (anyMissing(variance1, variance2, covariance))
        return VexMV::Missing();
    constexpr double roundingUnits = 8 * std::numeric_limits<double>::epsilon();
    const double radicand = variance1 + variance2 - 2 * covariance;
    const bool zeroByRounding = radicand < 0 && radicand >= -roundingUnits * (variance1 + variance2);
    return zeroByRounding ? 0.0 : std::sqrt(radicand);
}

DifferenceTest testDifference(double difference, double stdError, double zCritical)
{
    const auto [lower, upper] = confidenceInterval(difference, stdError, zCritical);
    if (anyMissing(difference, stdError))
        return {VexMV::Missing(), VexMV::Missing(), lower, upper};
    const double z = difference == 0 ? 0.0 : difference / stdError;
    return {z, twoSidedSignificance(z), lower, upper};
}

} // namespace ROCALG_920
