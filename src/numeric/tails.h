#pragma once

#include "numeric/DoubleDouble.h"

#include <cstdint>

/// Tails and quantiles of the distributions behind tests and intervals, with the same bits on every machine. Tails are
/// right to 1e-12 of their value, down to the smallest normal double, for the arguments as given; parameters up to
/// 2^40. Whatever depends on a NaN is a NaN.
namespace ROCALG_920 {

/// A tail and its natural logarithm, which goes on where the tail underflows.
struct Tail {
    double probability;
    double logarithm;
};

/// Of the standard normal distribution, above z.
[[nodiscard]] Tail normalUpperTail(double z) noexcept;

/// Of Student's distribution with `freedom` > 0 degrees of freedom, above t.
[[nodiscard]] Tail studentUpperTail(double t, double freedom) noexcept;

/// Of chi-square with `freedom` degrees of freedom, an integer from 1, above x >= 0.
[[nodiscard]] double chiSquareUpperTail(double x, std::int64_t freedom) noexcept;

/// Of Fisher's distribution with these degrees of freedom, both above 0, above x >= 0.
[[nodiscard]] double fisherUpperTail(double x, double numerator, double denominator) noexcept;

struct BothTails {
    double lower;
    double upper;
};
/// Of Beta(a, b), a and b from 1/2, at x in [0, 1].
[[nodiscard]] BothTails betaTails(double a, double b, double x) noexcept;

/// Where the lower tail of Beta(a, b) is p; not a number for p outside [0, 1].
[[nodiscard]] double betaQuantile(double p, double a, double b) noexcept;
/// Where the upper tail of Beta(a, b) is p.
[[nodiscard]] double betaUpperQuantile(double p, double a, double b) noexcept;

/// Where the upper tail of Student's distribution is p in (0, 1).
[[nodiscard]] double studentUpperQuantile(double p, double freedom) noexcept;

/// log of the gamma function, x > 0.
[[nodiscard]] DoubleDouble logGamma(DoubleDouble x) noexcept;

} // namespace ROCALG_920
