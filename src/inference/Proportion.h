#pragma once

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

/// The interval of the share of count among all. Exactly 0 at none and 1 at all; missing without any case or where the
/// critical value is.
///
/// @param zCritical  standard normal quantile of the two-sided interval, for wilson
/// @param level      confidence level, for exact
[[nodiscard]] Limits shareLimits(std::int64_t count, std::int64_t all, ProportionInterval interval, double zCritical,
                                 double level) noexcept;

/// Youden's index and its interval, from the two rates: Newcombe 1998, Statist. Med. 17, 873-890, method 10.
[[nodiscard]] Limits youdenLimits(double sensitivity, Limits ofSensitivity, double falsePositiveRate,
                                  Limits ofFalsePositiveRate) noexcept;

} // namespace ROCALG_920
