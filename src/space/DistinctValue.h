#pragma once

namespace ROCALG_920 {

/// One distinct test value with the number of its observations in each state.
struct DistinctValue {
    double value = 0.0;
    int positives = 0;
    int negatives = 0;
};

} // namespace ROCALG_920
