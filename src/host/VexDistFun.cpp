#include "host/VexDistFun.h"

#include "host/VexMV.h"

#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace VexMath_920 {

namespace {

constexpr auto sqrt2 = std::numbers::sqrt2_v<long double>;

/// Coefficients of a rational approximation, constant term first.
struct Rational {
    std::array<double, 8> numerator;
    std::array<double, 8> denominator;
};

// |p - 0.5| <= 0.425, in 0.425^2 - (p - 0.5)^2
constexpr Rational central{.numerator = {3.3871328727963666080e0, 1.3314166789178437745e2, 1.9715909503065514427e3,
                                         1.3731693765509461125e4, 4.5921953931549871457e4, 6.7265770927008700853e4,
                                         3.3430575583588128105e4, 2.5090809287301226727e3},
                           .denominator = {1.0, 4.2313330701600911252e1, 6.8718700749205790830e2,
                                           5.3941960214247511077e3, 2.1213794301586595867e4, 3.9307895800092710610e4,
                                           2.8729085735721942674e4, 5.2264952788528545610e3}};
// r = sqrt(-log(tail probability)) <= 5, in r - 1.6
constexpr Rational nearTail{.numerator = {1.42343711074968357734e0, 4.63033784615654529590e0, 5.76949722146069140550e0,
                                          3.64784832476320460504e0, 1.27045825245236838258e0, 2.41780725177450611770e-1,
                                          2.27238449892691845833e-2, 7.74545014278341407640e-4},
                            .denominator = {1.0, 2.05319162663775882187e0, 1.67638483018380384940e0,
                                            6.89767334985100004550e-1, 1.48103976427480074590e-1,
                                            1.51986665636164571966e-2, 5.47593808499534494600e-4,
                                            1.05075007164441684324e-9}};
// r > 5, in r - 5
constexpr Rational farTail{
    .numerator = {6.65790464350110377720e0, 5.46378491116411436990e0, 1.78482653991729133580e0,
                  2.96560571828504891230e-1, 2.65321895265761230930e-2, 1.24266094738807843860e-3,
                  2.71155556874348757815e-5, 2.01033439929228813265e-7},
    .denominator = {1.0, 5.99832206555887937690e-1, 1.36929880922735805310e-1, 1.48753612908506148525e-2,
                    7.86869131145613259100e-4, 1.84631831751005468180e-5, 1.42151175831644588870e-7,
                    2.04426310338993978564e-15}};

double polynomial(const std::array<double, 8>& coefficients, double x)
{
    double sum = 0.0;
    for (auto c = coefficients.rbegin(); c != coefficients.rend(); ++c)
        sum = sum * x + *c;
    return sum;
}

double evaluate(const Rational& rational, double x)
{
    return polynomial(rational.numerator, x) / polynomial(rational.denominator, x);
}

long double standardDensity(long double z)
{
    return std::exp(-0.5L * z * z) * std::numbers::inv_sqrtpi_v<long double> / sqrt2;
}

/// Distribution function at z, without the rounding of -z / sqrt(2) that would grow with the square of z.
long double standardCdf(long double z) { return 0.5L * std::erfc(-z / sqrt2); }

/// Quantile of p with |p - 0.5| <= 0.425. The approximation is off by some units in the last place; a Newton step
/// on the distance from the median, which keeps its digits near 0, leaves a half.
double centralQuantile(double p)
{
    const double q = p - 0.5;
    const long double z = q * evaluate(central, 0.180625 - q * q);
    const long double excess = 0.5L * std::erf(z / sqrt2) - (p - 0.5L);
    return static_cast<double>(z - excess / standardDensity(z));
}

/// Quantile, negative, of a lower tail below 0.075; with a Newton step on the tail probability.
double tailQuantile(double tail)
{
    const double r = std::sqrt(-std::log(tail));
    const long double z = r <= 5.0 ? -evaluate(nearTail, r - 1.6) : -evaluate(farTail, r - 5.0);
    const long double excess = standardCdf(z) - tail;
    return static_cast<double>(z - excess / standardDensity(z));
}

/// Standard normal quantile of p in (0, 1).
double standardQuantile(double p)
{
    if (std::abs(p - 0.5) <= 0.425)
        return centralQuantile(p);
    return p < 0.5 ? tailQuantile(p) : -tailQuantile(1.0 - p);
}

} // namespace

double VexDistFun::CdfStdNorm(double z)
{
    if (std::isnan(z))
        return z; // arithmetic could change its bits, and the missing value would no longer be missing
    return static_cast<double>(standardCdf(z));
}

double VexDistFun::IdfNorm(double p, double mean, double stdDeviation)
{
    const bool isDistribution = std::isfinite(mean) && std::isfinite(stdDeviation) && stdDeviation >= 0.0;
    if (!isDistribution || !(p >= 0.0 && p <= 1.0))
        return VexCommon_920::VexMV::Missing();
    if (p == 0.0 || p == 1.0)
        return std::copysign(std::numeric_limits<double>::infinity(), p - 0.5);
    return mean + stdDeviation * standardQuantile(p);
}

} // namespace VexMath_920
