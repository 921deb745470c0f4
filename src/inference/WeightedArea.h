#pragma once

#include "inference/AreaInference.h"
#include "summary/WeightedSummary.h"

namespace ROCALG_920 {

/// The area of cases with probability weights, and the two terms of its variance: every case is a sampling unit, drawn
/// with replacement, and the states are strata. Weights that are all equal leave DeLong's, to the bit; their scale
/// cannot matter. The sample has weights; larger values are more positive. Missing without both states.
///
/// Binder 1983, Int. Statist. Rev. 51, 279-292; Yao, Li and Graubard 2015, Statist. Med. 34, 1293-1303.
[[nodiscard]] AreaFacts weightedAreaFacts(const WeightedSummary& sample);

} // namespace ROCALG_920
