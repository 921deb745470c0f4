#include "numeric/elementary.h"

#include <array>
#include <cmath>
#include <limits>

namespace ROCALG_920 {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// log(2) in three parts.
constexpr double logTwoHigh = 0.6931471805599453;
constexpr DoubleDouble logTwoLow{2.3190468138462996e-17, 5.707708438416212e-34};

DoubleDouble timesLogTwo(double whole) { return DoubleDouble::product(whole, logTwoHigh) + logTwoLow * whole; }

/// e^x - 1 for |x| below 0.7: the Taylor series at x / 2^9, and nine doublings of the argument.
DoubleDouble smallExponentialLessOne(DoubleDouble x)
{
    constexpr int doublings = 9;
    constexpr int terms = 11;
    const DoubleDouble s = x.scaled(-doublings);
    DoubleDouble sum = 1.0;
    for (int n = terms; n > 1; --n)
        sum = 1.0 + sum * s / double(n);
    DoubleDouble value = sum * s;
    for (int i = 0; i < doublings; ++i)
        value = value * 2.0 + value * value;
    return value;
}

/// An approximation of log(1 + u) for u within about 0.45 of 0, to a double's digits.
double approximateLogarithm(double u)
{
    constexpr int terms = 14;
    const double z = u / (2.0 + u);
    double sum = 0.0;
    for (int n = terms; n >= 0; --n)
        sum = sum * (z * z) + 1.0 / (2 * n + 1);
    return 2.0 * z * sum;
}

/// log(1 + u) for u within about 0.45 of 0: one Newton step from a double.
DoubleDouble nearLogarithm(DoubleDouble u)
{
    const double start = approximateLogarithm(u.high());
    const DoubleDouble inverse = smallExponentialLessOne(-start); // 1 / (1 + u) - 1, nearly
    const DoubleDouble excess = (inverse + u) + inverse * u;      // (1 + u) e^-start - 1
    return start + (excess - excess * excess * 0.5);
}

} // namespace

DoubleDouble exponential(DoubleDouble x) noexcept
{
    constexpr double largest = 710.0;
    constexpr double smallest = -760.0;
    if (std::isnan(x.high()))
        return x.high();
    if (x.high() > largest || x.high() < smallest)
        return x.high() > 0.0 ? infinity : 0.0;
    const double twos = std::floor(x.high() / logTwoHigh + 0.5);
    return (1.0 + smallExponentialLessOne(x - timesLogTwo(twos))).scaled(static_cast<int>(twos));
}

double quickExponential(double x) noexcept
{
    // 1/13!, 1/12!, ..., 1/0!: what is left out is below 2^-57 for |rest| up to log(2) / 2.
    constexpr std::array<double, 14> coefficients{1.0 / 6227020800.0,
                                                  1.0 / 479001600.0,
                                                  1.0 / 39916800.0,
                                                  1.0 / 3628800.0,
                                                  1.0 / 362880.0,
                                                  1.0 / 40320.0,
                                                  1.0 / 5040.0,
                                                  1.0 / 720.0,
                                                  1.0 / 120.0,
                                                  1.0 / 24.0,
                                                  1.0 / 6.0,
                                                  1.0 / 2.0,
                                                  1.0,
                                                  1.0};
    constexpr double logTwoCut = 0x1.62e42fefp-1; // 32 bits of log(2): its products with whole numbers are exact
    constexpr double logTwoRest = 0x1.473de6af278edp-34;
    constexpr double largest = 710.0;
    constexpr double smallest = -746.0;
    if (std::isnan(x))
        return x;
    if (x > largest || x < smallest)
        return x > 0.0 ? infinity : 0.0;
    const double twos = std::floor(x / logTwoHigh + 0.5);
    const double rest = (x - twos * logTwoCut) - twos * logTwoRest;
    double power = 0.0;
    for (const double coefficient : coefficients)
        power = power * rest + coefficient;
    return std::ldexp(power, static_cast<int>(twos));
}

DoubleDouble exponentialLessOne(DoubleDouble x) noexcept
{
    constexpr double small = 0.35;
    return std::abs(x.high()) < small ? smallExponentialLessOne(x) : exponential(x) - 1.0;
}

DoubleDouble logarithm(DoubleDouble x) noexcept
{
    constexpr double rootOfHalf = 0.70710678118654757;
    if (!(x.high() > 0.0) || std::isinf(x.high()))
        return std::isinf(x.high()) && x.high() > 0.0 ? infinity
            : x.high() == 0.0                         ? -infinity
                                                      : std::numeric_limits<double>::quiet_NaN();
    int exponent = 0;
    if (std::frexp(x.high(), &exponent) < rootOfHalf)
        --exponent;
    return timesLogTwo(exponent) + nearLogarithm(x.scaled(-exponent) - 1.0);
}

DoubleDouble logarithmOfOnePlus(DoubleDouble x) noexcept
{
    constexpr double small = 0.25;
    return std::abs(x.high()) < small ? nearLogarithm(x) : logarithm(1.0 + x);
}

DoubleDouble logit(double p) noexcept { return logarithm(p) - logarithm(DoubleDouble::sum(1.0, -p)); }

double expit(DoubleDouble x) noexcept
{
    const bool isUpper = x.high() >= 0.0;
    const DoubleDouble power = exponential(isUpper ? -x : x);
    return static_cast<double>((isUpper ? DoubleDouble(1.0) : power) / (1.0 + power));
}

DoubleDouble root(DoubleDouble x) noexcept
{
    const double start = std::sqrt(x.high());
    if (!(start > 0.0) || std::isinf(start))
        return start;
    return DoubleDouble::sum(start, (x - DoubleDouble::product(start, start)).high() / (2.0 * start));
}

} // namespace ROCALG_920
