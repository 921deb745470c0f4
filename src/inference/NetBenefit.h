#pragma once

#include "summary/CutOffCounts.h"
#include "summary/Summary.h"

#include <optional>

/// Scores as risks: what decisions by them are worth, and whether they agree with the cases on the whole.
namespace ROCALG_920 {

/// TP/n - (FP/n) t/(1 - t) at the threshold t in (0, 1), or at the prevalence q se q - (1 - sp) (1 - q) t/(1 - t):
/// Vickers and Elkin 2006, Med. Decis. Making 26, 565-574. Both states occur.
[[nodiscard]] double netBenefit(const CutOffCounts& counts, double threshold,
                                std::optional<double> prevalence) noexcept;

struct Calibration {
    double meanScore;
    double observed; ///< share of positive cases, or the stated prevalence
    double stdError; ///< sqrt(m (1 - m) / n) of the mean score m: that of the observed share if the scores are right
    bool differs;    ///< by more than three of them
};
/// Of values in [0, 1]; missing without cases, and at a stated prevalence without both states.
[[nodiscard]] Calibration calibration(const Summary& sample, std::optional<double> prevalence) noexcept;

} // namespace ROCALG_920
