#pragma once

#include "inference/AreaIntervals.h"
#include "summary/Summary.h"

#include <functional>
#include <optional>

/// The rank sum test of one area against 1/2.
namespace ROCALG_920 {

struct MannWhitney {
    double twiceU; ///< 2 P N times the area
    double z;      ///< with the correction for continuity, if asked for
    double p;      ///< by the normal distribution
};

/// By the normal distribution, with the variance that ties leave. All values equal: z 0 and p 1.
[[nodiscard]] MannWhitney mannWhitney(const Summary& sample, Alternative alternative, bool corrected = true);

/// Steps that the exact p takes: cases times those of the smaller state times 2 P N.
[[nodiscard]] double exactSteps(const StateCounts& cases) noexcept;

/// The exact p: over all ways in which the observed values, ties kept, can fall to the states. Two-sided: those at
/// least as far from P N / 2. Memory: 8 bytes for every number of cases of the smaller state times P N. Nothing when
/// goOn, asked for every distinct value with the share of the work that is done, answers false. Throws std::bad_alloc.
///
/// Streitberg and Roehmel 1986, Statist. Software Newsletter 12, 10-17.
[[nodiscard]] std::optional<double> exactMannWhitney(const Summary& sample, Alternative alternative,
                                                     const std::function<bool(double)>& goOn = {});

} // namespace ROCALG_920
