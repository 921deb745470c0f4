#include "inference/AreaIntervals.h"

#include "host/VexMV.h"
#include "numeric/elementary.h"
#include "numeric/tails.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

Limits logitLimits(const AreaEstimate& estimate, double z)
{
    const double a = estimate.area;
    const double variance = estimate.deLongVariance;
    if (std::isnan(variance))
        return {variance, variance};
    if (a == 0.0 || a == 1.0 || variance == 0.0) // exact
        return {missing, missing};
    const DoubleDouble half = DoubleDouble::product(z, std::sqrt(variance)) / (DoubleDouble(a) * (1.0 - a));
    return {expit(logit(a) - half), expit(logit(a) + half)};
}

/// The variance that an area of t would have, times the guard.
class ScoreVariance {
public:
    ScoreVariance(const StateCounts& cases, double guard)
        : m_(static_cast<double>(cases.cases()) / 2.0 - 1.0),
          pairs_(static_cast<double>(cases.positives) * static_cast<double>(cases.negatives)), guard_(guard)
    {
    }
    /// t(1-t) (1 + m (1-t)/(2-t) + m t/(1+t)) / (P N)
    [[nodiscard]] double at(double t) const noexcept
    {
        return guard_ * (t * (1.0 - t) * (1.0 + m_ * (1.0 - t) / (2.0 - t) + m_ * t / (1.0 + t)) / pairs_);
    }

private:
    double m_;
    double pairs_;
    double guard_;
};

/// Between an end outside the interval and the area, which is in it: the last double outside.
double scoreLimit(double outside, double area, double zCritical, const ScoreVariance& variance)
{
    double inside = area;
    const double square = zCritical * zCritical;
    for (double t = outside + (inside - outside) / 2.0; t != outside && t != inside;
         t = outside + (inside - outside) / 2.0)
        ((area - t) * (area - t) >= square * variance.at(t) ? outside : inside) = t;
    return outside;
}

Limits scoreLimits(const AreaEstimate& estimate, double z, bool guarded)
{
    const double a = estimate.area;
    const double plain = ScoreVariance(estimate.cases, 1.0).at(a);
    const double ratio = estimate.deLongVariance / plain;
    const bool hasRatio = guarded && a > 0.0 && a < 1.0 && ratio > 1.0; // false where the variance is not a number
    const ScoreVariance variance(estimate.cases, hasRatio ? ratio : 1.0);
    return {a == 0.0 ? 0.0 : scoreLimit(0.0, a, z, variance), a == 1.0 ? 1.0 : scoreLimit(1.0, a, z, variance)};
}

/// Of a statistic whose distribution has the same tail on either side.
template <class UpperTail>
PValue pOfTail(const UpperTail& upperTail, double x, Alternative alternative)
{
    const bool twoSided = alternative == Alternative::twoSided;
    const Tail tail = upperTail(twoSided ? std::abs(x) : alternative == Alternative::greater ? x : -x);
    if (!twoSided)
        return {tail.probability, tail.logarithm * std::numbers::log10e};
    return {2.0 * tail.probability, (tail.logarithm + std::numbers::ln2) * std::numbers::log10e};
}

} // namespace

Limits areaLimits(const AreaEstimate& estimate, AreaInterval interval, double zCritical) noexcept
{
    if (std::isnan(zCritical))
        return {missing, missing};
    switch (interval) {
    case AreaInterval::logit: return logitLimits(estimate, zCritical);
    case AreaInterval::newcombe: return scoreLimits(estimate, zCritical, false);
    case AreaInterval::score: return scoreLimits(estimate, zCritical, true);
    case AreaInterval::waldDeLong: break;
    }
    const double half = zCritical * std::sqrt(estimate.deLongVariance);
    return {estimate.area - half, estimate.area + half};
}

PValue pOfNormal(double z, Alternative alternative) noexcept
{
    return pOfTail([](double x) { return normalUpperTail(x); }, z, alternative);
}

PValue pOfStudent(double t, double freedom, Alternative alternative) noexcept
{
    return pOfTail([=](double x) { return studentUpperTail(x, freedom); }, t, alternative);
}

double zOfArea(double area, double null, double stdError) noexcept
{
    const double distance = area - null;
    return distance == 0.0 && stdError == 0.0 ? 0.0 : distance / stdError; // exact
}

} // namespace ROCALG_920
