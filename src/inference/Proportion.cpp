#include "inference/Proportion.h"

#include "host/VexMV.h"
#include "numeric/elementary.h"
#include "numeric/tails.h"

#include <cmath>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

/// (p + z^2/2n -+ z sqrt(p(1-p)/n + z^2/4n^2)) / (1 + z^2/n)
Limits wilson(std::int64_t count, std::int64_t all, double z)
{
    const auto n = static_cast<double>(all);
    const double p = share(count, all);
    const double square = z * z;
    const double middle = p + square / (2.0 * n);
    const double half = z * std::sqrt(p * (1.0 - p) / n + square / (4.0 * n * n));
    const double scale = 1.0 + square / n;
    return {count == 0 ? 0.0 : (middle - half) / scale, count == all ? 1.0 : (middle + half) / scale};
}

/// alpha / 2 of the level, and the root of it where the quantile has a closed form.
Limits clopperPearson(std::int64_t count, std::int64_t all, double level)
{
    const double tail = (1.0 - level) / 2.0;
    const auto x = static_cast<double>(count);
    const auto rest = static_cast<double>(all - count);
    const auto rootOfTail = [&] { return logarithm(tail) / static_cast<double>(all); }; // log of tail^(1/n)
    const double lower = count == 0 ? 0.0
        : count == all              ? static_cast<double>(exponential(rootOfTail()))
                                    : betaQuantile(tail, x, rest + 1.0);
    const double upper = count == all ? 1.0
        : count == 0                  ? static_cast<double>(-exponentialLessOne(rootOfTail()))
                                      : betaUpperQuantile(tail, x + 1.0, rest);
    return {lower, upper};
}

} // namespace

double share(std::int64_t count, std::int64_t all) noexcept
{
    return all == 0 ? missing : static_cast<double>(count) / static_cast<double>(all);
}

Limits shareLimits(std::int64_t count, std::int64_t all, ProportionInterval interval, double zCritical,
                   double level) noexcept
{
    if (all == 0 || VexCommon_920::VexMV::IsMissing(zCritical))
        return {missing, missing};
    return interval == ProportionInterval::exact ? clopperPearson(count, all, level) : wilson(count, all, zCritical);
}

Limits youdenLimits(double sensitivity, Limits ofSensitivity, double falsePositiveRate,
                    Limits ofFalsePositiveRate) noexcept
{
    const auto distance = [](double a, double b) { return std::sqrt(a * a + b * b); };
    const double youden = sensitivity - falsePositiveRate;
    return {youden - distance(sensitivity - ofSensitivity.lower, ofFalsePositiveRate.upper - falsePositiveRate),
            youden + distance(ofSensitivity.upper - sensitivity, falsePositiveRate - ofFalsePositiveRate.lower)};
}

} // namespace ROCALG_920
