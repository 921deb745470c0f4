#pragma once

#include "numeric/DoubleDouble.h"

/// Exponential and logarithm with the same bits on every machine, to about 30 digits. Those of the C library differ in
/// the last bit from processor to processor.
namespace ROCALG_920 {

/// e^x. 0 far below the range of a double, infinity above it; where the result is denormal, its bits are fewer.
[[nodiscard]] DoubleDouble exponential(DoubleDouble x) noexcept;

/// e^x to 2 units in the last place of a double, for lists: in a fiftieth of the time.
[[nodiscard]] double quickExponential(double x) noexcept;

/// e^x - 1 without cancellation around 0.
[[nodiscard]] DoubleDouble exponentialLessOne(DoubleDouble x) noexcept;

/// Natural logarithm of x > 0; minus infinity for 0, not a number below.
[[nodiscard]] DoubleDouble logarithm(DoubleDouble x) noexcept;

/// log(1 + x) for x > -1, without cancellation around 0.
[[nodiscard]] DoubleDouble logarithmOfOnePlus(DoubleDouble x) noexcept;

/// log(p / (1 - p)) for p in (0, 1), and its inverse, which loses no digits near 0 and 1.
[[nodiscard]] DoubleDouble logit(double p) noexcept;
[[nodiscard]] double expit(DoubleDouble x) noexcept;

/// Root of x >= 0.
[[nodiscard]] DoubleDouble root(DoubleDouble x) noexcept;

/// log(2 pi) / 2
inline constexpr DoubleDouble halfLogTwoPi{0.91893853320467278, -3.8782941580672414e-17};
/// log(10)
inline constexpr DoubleDouble logTen{2.302585092994046, -2.1707562233822494e-16};

} // namespace ROCALG_920
