#pragma once

#include "inference/AreaIntervals.h"
#include "numeric/Int128.h"
#include "summary/Summary.h"

#include <functional>
#include <optional>

/// The rank sum test of one area against 1/2.
namespace ROCALG_920 {

struct MannWhitney {
    double z;
    PValue p;
};

/// By the normal distribution, with the variance that ties leave. All values equal: z 0 and p 1.
///
/// @param twiceU     2 P N times the area
/// @param tieSum     of t^3 - t over the distinct values, t the cases of one
/// @param corrected  for continuity
[[nodiscard]] MannWhitney mannWhitney(const StateCounts& cases, Int128 twiceU, Int128 tieSum, Alternative alternative,
                                      bool corrected = true);

/// Steps that the exact p takes: cases times those of the smaller state times 2 P N.
[[nodiscard]] double exactSteps(const StateCounts& cases) noexcept;

/// Memory that it takes: 4 bytes times its steps over the cases; 3 MB at 1e8 steps, at most half a GB at 1e11.
[[nodiscard]] double exactBytes(const StateCounts& cases) noexcept;

/// The exact p: over all ways in which the observed values, ties kept, can fall to the states. Two-sided: those at
/// least as far from P N / 2. Memory: exactBytes. Nothing when goOn, asked now and then with the share of the values
/// that is done, answers false. Throws std::bad_alloc.
///
/// Streitberg and Roehmel 1986, Statist. Software Newsletter 12, 10-17.
[[nodiscard]] std::optional<double> exactMannWhitney(const Summary& sample, Alternative alternative,
                                                     const std::function<bool(double)>& goOn = {});

} // namespace ROCALG_920
