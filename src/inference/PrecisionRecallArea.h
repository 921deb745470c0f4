#pragma once

#include "inference/Proportion.h"
#include "summary/Summary.h"

#include <optional>

/// The area under the precision-recall curve by three named rules.
namespace ROCALG_920 {

enum class PrecisionRecallRule {
    integral,  ///< of the interpolated curve: Davis and Goadrich 2006; Keilwagen, Grosse and Grau 2014
    step,      ///< average precision
    trapezoid, ///< straight lines between points; too high where they lie far apart
};

/// The area; missing without both states.
///
/// @param prevalence  in (0, 1): every false positive counts (1 - q) P / (q N); that of the sample without it
[[nodiscard]] double precisionRecallArea(const Summary& sample, PrecisionRecallRule rule,
                                         std::optional<double> prevalence = {});

enum class PrecisionRecallInterval { logit, binomial };

/// Boyd, Eng and Page 2013, ECML PKDD, 451-466. Logit limits of an area of 0 or 1 are missing.
[[nodiscard]] Limits precisionRecallLimits(double area, std::int64_t positives, PrecisionRecallInterval interval,
                                           double zCritical) noexcept;

/// The lowest area that so many cases can have, without ties: Boyd, Costa, Davis and Page 2012, ICML. Missing for the
/// rule trapezoid and without both states.
[[nodiscard]] double lowestPrecisionRecallArea(const StateCounts& cases, PrecisionRecallRule rule);

} // namespace ROCALG_920
