#pragma once

namespace VexMath_920 {

/// Normal distribution function and its inverse.
///
/// Both compute in long double and round once: where that is wider than double, the last digit of a standard normal
/// probability or quantile is right. They keep no state and may be called from several threads.
class [[gnu::visibility("default")]] VexDistFun
{
public:
    /// Standard normal distribution function: 0.5 * erfc(-z / sqrt(2)), so the lower tail keeps its digits. NaN
    /// comes back as it was.
    [[nodiscard]] static double CdfStdNorm(double z);

    /// Inverse of the normal distribution function with this mean and standard deviation at the probability p.
    ///
    /// p = 0 gives -infinity and p = 1 +infinity. The missing value comes back for p outside [0, 1], for a mean or
    /// standard deviation that is not finite and for a negative standard deviation.
    /// Source: Wichura (1988), Algorithm AS 241: The percentage points of the normal distribution, Applied
    /// Statistics 37, 477-484 (routine PPND16), and one Newton step.
    [[nodiscard]] static double IdfNorm(double p, double mean, double stdDeviation);
};

} // namespace VexMath_920
