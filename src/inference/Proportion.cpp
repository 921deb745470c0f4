#include "inference/Proportion.h"

#include "host/VexMV.h"
#include "numeric/elementary.h"
#include "numeric/tails.h"

#include <cmath>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

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
    return interval == ProportionInterval::exact
        ? clopperPearson(count, all, level)
        : wilsonLimits(static_cast<double>(count), static_cast<double>(all), zCritical);
}

} // namespace ROCALG_920
