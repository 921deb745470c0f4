#pragma once

namespace ROCALG_920 {

/// The chance that a standard normal variable lies at least as far from 0 as a statistic, on either side.
struct TwoSidedP {
    double p;     ///< erfc(|z| / sqrt(2)), right to 1e-13 down to the smallest normal double
    double log10; ///< its decimal logarithm, also where p underflows; -infinity for an infinite z
};
/// Not a number for such a z.
[[nodiscard]] TwoSidedP twoSidedP(double z) noexcept;

} // namespace ROCALG_920
