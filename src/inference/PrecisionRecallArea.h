#pragma once

#include "inference/Proportion.h"
#include "summary/ValueWalk.h"
#include "summary/WeightedSummary.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// The area under the precision-recall curve by three named rules.
namespace ROCALG_920 {

enum class PrecisionRecallRule {
    integral,  ///< of the interpolated curve: Davis and Goadrich 2006; Keilwagen, Grosse and Grau 2014
    step,      ///< average precision
    trapezoid, ///< straight lines between points; too high where they lie far apart
};

/// The area; missing without both states. Larger values are more positive.
///
/// @param values      distinct ones, ascending, with these cases in all
/// @param prevalence  in (0, 1): every false positive counts (1 - q) P / (q N); that of the sample without it
[[nodiscard]] double precisionRecallArea(std::span<const DistinctValue> values, const StateCounts& cases,
                                         PrecisionRecallRule rule, std::optional<double> prevalence = {});

/// The same of cases with probability weights, which count instead of the cases.
[[nodiscard]] double precisionRecallArea(const WeightedSummary& sample, PrecisionRecallRule rule,
                                         std::optional<double> prevalence = {});

/// What the area changes with the cases of every distinct value, but for a constant of each state, which is what the
/// acceleration of a bootstrap asks for: P times the derivative by the number of its positive cases, and N times that
/// by the negative ones.
///
/// The area is a sum of terms over the steps from (T0, F0) to (T1, F1). A case moves the end of its own step and both
/// ends of every later one, so its derivative is that of its own term by the step's width or height plus the sum, over
/// all later terms, of their derivatives by T0 or F0: one pass from the laxest cut-off on. Both states occur.
struct CaseInfluence {
    std::vector<double> ofPositive; ///< parallel to the distinct values
    std::vector<double> ofNegative;
};
[[nodiscard]] CaseInfluence precisionRecallInfluence(std::span<const DistinctValue> values, const StateCounts& cases,
                                                     PrecisionRecallRule rule, std::optional<double> prevalence = {});

enum class PrecisionRecallInterval { logit, binomial };

/// Boyd, Eng and Page 2013, ECML PKDD, 451-466. Logit limits of an area of 0 or 1 are missing.
[[nodiscard]] Limits precisionRecallLimits(double area, std::int64_t positives, PrecisionRecallInterval interval,
                                           double zCritical) noexcept;

/// The lowest area that so many cases can have, without ties: Boyd, Costa, Davis and Page 2012, ICML. Missing for the
/// rule trapezoid and without both states.
[[nodiscard]] double lowestPrecisionRecallArea(const StateCounts& cases, PrecisionRecallRule rule);

} // namespace ROCALG_920
