#pragma once

#include "cli/picture/Chart.h"
#include "cli/study/CurveInference.h"

#include <string>
#include <vector>

namespace vexroc {

/// An answer about a curve under the name that a legend shows; empty where there is one curve.
template <class Answer>
struct NamedAnswer {
    std::string name;
    const Answer* answer;
};

/// Sensitivity and specificity against the cut-off, in the bands of their limits.
Chart operatingPointsChart(const std::vector<NamedAnswer<OperatingPoints>>& curves);

/// Net benefit against the threshold, with that of treating all and treating none. Curves of one share of positive
/// cases have one line of treating all.
Chart netBenefitChart(const std::vector<NamedAnswer<NetBenefit>>& curves);

} // namespace vexroc
