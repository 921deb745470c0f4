#include "numeric/NormalTail.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace ROCALG_920 {

namespace {

/// log10 of erfc(x) from its asymptotic series. Relative error below 1e-17 from x = 20 on.
/// Source: Abramowitz and Stegun (1964), Handbook of mathematical functions, 7.1.23.
long double log10OfTail(long double x)
{
    constexpr int terms = 12;
    const long double step = -0.5L / (x * x);
    long double series = 0.0L;
    for (int m = terms; m > 0; --m) // 1 + s + 1*3 s^2 + 1*3*5 s^3 + ...
        series = (1.0L + series) * static_cast<long double>(2 * m - 1) * step;
    const long double factor = std::log1p(series) - std::log(x) - 0.5L * std::log(std::numbers::pi_v<long double>);
    return (factor - x * x) * std::numbers::log10e_v<long double>;
}

} // namespace

TwoSidedP twoSidedP(double z) noexcept
{
    if (std::isinf(z))
        return {0.0, -std::numeric_limits<double>::infinity()};
    constexpr long double seriesFrom = 20.0L; // here erfc is 5e-176: far from where any type ends
    const long double x = std::abs(static_cast<long double>(z)) / std::numbers::sqrt2_v<long double>;
    const long double p = std::erfc(x);
    const long double log10 = x < seriesFrom ? std::log10(p) : log10OfTail(x);
    return {static_cast<double>(p), static_cast<double>(log10)};
}

} // namespace ROCALG_920
