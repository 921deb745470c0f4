#pragma once

#include <cmath>
#include <cstdint>

/// Shares of counts and their intervals.
namespace ROCALG_920 {

struct Limits {
    double lower;
    double upper;
};

/// How an interval of a share is made.
enum class ProportionInterval {
    wilson, ///< Wilson 1927, J. Am. Statist. Assoc. 22, 209-212
    exact,  ///< Clopper and Pearson 1934, Biometrika 26, 404-413
};

/// count / all, one division of integers up to 2^53; missing without any case.
[[nodiscard]] double share(std::int64_t count, std::int64_t all) noexcept;

/// (p + z^2/2n -+ z sqrt(p(1-p)/n + z^2/4n^2)) / (1 + z^2/n), exactly 0 at none and 1 at all; whole numbers up to 2^53.
[[nodiscard]] inline Limits wilsonLimits(double count, double all, double z) noexcept
{
    const double p = count / all;
    const double square = z * z;
    const double middle = p + square / (2.0 * all);
    const double half = z * std::sqrt(p * (1.0 - p) / all + square / (4.0 * all * all));
    const double scale = 1.0 + square / all;
    return {count == 0.0 ? 0.0 : (middle - half) / scale, count == all ? 1.0 : (middle + half) / scale}; // exact
}

/// The interval of the share of count among all. Exactly 0 at none and 1 at all; missing without any case or where the
/// critical value is.
///
/// @param zCritical  standard normal quantile of the two-sided interval, for wilson
/// @param level      confidence level, for exact
[[nodiscard]] Limits shareLimits(std::int64_t count, std::int64_t all, ProportionInterval interval, double zCritical,
                                 double level) noexcept;

/// Youden's index and its interval, from the two rates: Newcombe 1998, Statist. Med. 17, 873-890, method 10.
[[nodiscard]] inline Limits youdenLimits(double sensitivity, Limits ofSensitivity, double falsePositiveRate,
                                         Limits ofFalsePositiveRate) noexcept
{
    const auto distance = [](double a, double b) { return std::sqrt(a * a + b * b); };
    const double youden = sensitivity - falsePositiveRate;
    return {youden - distance(sensitivity - ofSensitivity.lower, ofFalsePositiveRate.upper - falsePositiveRate),
            youden + distance(ofSensitivity.upper - sensitivity, falsePositiveRate - ofFalsePositiveRate.lower)};
}

} // namespace ROCALG_920
