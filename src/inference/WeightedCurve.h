#pragma once

#include "summary/CurveSweep.h"
#include "summary/WeightedSummary.h"

#include <span>
#include <utility>
#include <vector>

namespace ROCALG_920 {

/// A curve whose rates are shares of probability weights. Its lists run parallel to the cut-offs; all points are
/// measured, since between two of them there are no whole cases to draw others by.
struct WeightedCurve {
    std::vector<std::pair<double, double>> sensSpec;        ///< (sensitivity, specificity)
    std::vector<std::pair<double, double>> precisionRecall; ///< where nothing is positive, the precision beside it
};

/// Of a sample with weights and both states, at ascending cut-offs.
[[nodiscard]] WeightedCurve weightedCurve(const WeightedSummary& sample, std::span<const double> cutOffs,
                                          CurveOptions options);

} // namespace ROCALG_920
