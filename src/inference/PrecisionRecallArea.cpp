#include "inference/PrecisionRecallArea.h"

#include "host/VexMV.h"
#include "numeric/elementary.h"

#include <cmath>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

/// log(1 + x) for x >= 0, and x less it, without cancellation.
struct Logarithm {
    double value;
    double below;
};

Logarithm logarithmAndRest(double x)
{
    const DoubleDouble value = logarithmOfOnePlus(x);
    return {static_cast<double>(value), static_cast<double>(x - value)};
}

/// Adds up the area times P from the strictest cut-off on.
class AreaSweep {
public:
    AreaSweep(PrecisionRecallRule rule, double falsePositiveWeight) : rule_(rule), weight_(falsePositiveWeight) {}

    void add(std::int64_t positives, std::int64_t negatives)
    {
        const auto gained = static_cast<double>(positives);
        const double before = weighted_;
        const auto t0 = static_cast<double>(truePositives_);
        truePositives_ += positives;
        falsePositives_ += negatives;
        weighted_ = static_cast<double>(falsePositives_) * weight_;
        const auto t1 = static_cast<double>(truePositives_);
        const double d1 = t1 + weighted_;
        const double precision = t1 / d1;
        if (positives > 0)
            sum_ += isFirst_ || rule_ == PrecisionRecallRule::step ? gained * precision
                : rule_ == PrecisionRecallRule::trapezoid          ? gained * (last_ + precision) / 2.0
                                                                   : betweenPoints(t0, t0 + before, gained, d1);
        last_ = precision;
        isFirst_ = false;
    }
    [[nodiscard]] double sum() const noexcept { return sum_; }

private:
    /// T0/s L + D0/s^2 (x - L) for D = T + F, s = (D1 - D0)/(T1 - T0), x = (D1 - D0)/D0, L = log(1 + x)
    static double betweenPoints(double t0, double d0, double gained, double d1)
    {
        const double s = (d1 - d0) / gained;
        const auto [value, below] = logarithmAndRest((d1 - d0) / d0);
        return t0 / s * value + d0 / (s * s) * below;
    }

    PrecisionRecallRule rule_;
    double weight_;
    std::int64_t truePositives_ = 0;
    std::int64_t falsePositives_ = 0;
    double weighted_ = 0.0; ///< false positives
    double last_ = 0.0;     ///< precision
    bool isFirst_ = true;
    double sum_ = 0.0;
};

} // namespace

double precisionRecallArea(const Summary& sample, PrecisionRecallRule rule, std::optional<double> prevalence)
{
    const StateCounts& cases = sample.counts();
    if (!cases.bothStates())
        return missing;
    const auto p = static_cast<double>(cases.positives);
    const double weight =
        prevalence ? (1.0 - *prevalence) * p / (*prevalence * static_cast<double>(cases.negatives)) : 1.0;
    AreaSweep sweep(rule, weight);
    for (auto x = sample.values().rbegin(); x != sample.values().rend(); ++x)
        sweep.add(x->positives, x->negatives);
    return sweep.sum() / p;
}

Limits precisionRecallLimits(double area, std::int64_t positives, PrecisionRecallInterval interval,
                             double zCritical) noexcept
{
    if (std::isnan(area) || std::isnan(zCritical))
        return {missing, missing};
    const auto n = static_cast<double>(positives);
    if (interval == PrecisionRecallInterval::binomial) {
        const double half = zCritical * std::sqrt(area * (1.0 - area) / n);
        return {area - half, area + half};
    }
    if (area == 0.0 || area >= 1.0) // exact
        return {missing, missing};
    const double half = zCritical / std::sqrt(n * area * (1.0 - area));
    return {expit(logit(area) - half), expit(logit(area) + half)};
}

double lowestPrecisionRecallArea(const StateCounts& cases, PrecisionRecallRule rule)
{
    if (!cases.bothStates() || rule == PrecisionRecallRule::trapezoid)
        return missing;
    const auto p = static_cast<double>(cases.positives);
    const auto n = static_cast<double>(cases.negatives);
    if (rule == PrecisionRecallRule::integral) { // 1 + (1 - g)/g log(1 - g), g = P/(P + N)
        const double x = p / n;                  // log(1 - g) = -log(1 + x)
        return logarithmAndRest(x).below / x;
    }
    double sum = 0.0;
    for (double i = 1.0; i <= p; i += 1.0)
        sum += i / (i + n);
    return sum / p;
}

} // namespace ROCALG_920
