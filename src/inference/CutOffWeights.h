#pragma once

#include "numeric/DoubleDouble.h"
#include "summary/WeightedSummary.h"

#include <cstddef>
#include <vector>

namespace ROCALG_920 {

/// How one cut-off classifies the weights of cases: CutOffCounts by weight.
struct CutOffWeights {
    double truePositives;
    double falsePositives;
    double trueNegatives;
    double falseNegatives;
};

/// The weights on either side of any cut-off; 32 bytes a distinct value. Differences are formed before anything is
/// rounded, so that a side without cases has no weight.
class WeightsBySide {
public:
    WeightsBySide(const WeightedSummary& sample, bool largerIsPositive) : larger_(largerIsPositive)
    {
        left_.reserve(sample.weights.size() + 1);
        left_.push_back({});
        for (const ValueWeights& x : sample.weights)
            left_.push_back({left_.back().positives + x.positives.sum, left_.back().negatives + x.negatives.sum});
    }

    /// @param place  distinct values left of the cut-off
    [[nodiscard]] CutOffWeights at(std::size_t place) const
    {
        const Totals& left = left_[place];
        const Totals right{left_.back().positives - left.positives, left_.back().negatives - left.negatives};
        const Totals& calledPositive = larger_ ? right : left;
        const Totals& calledNegative = larger_ ? left : right;
        return {static_cast<double>(calledPositive.positives), static_cast<double>(calledPositive.negatives),
                static_cast<double>(calledNegative.negatives), static_cast<double>(calledNegative.positives)};
    }

private:
    struct Totals {
        DoubleDouble positives;
        DoubleDouble negatives;
    };

    bool larger_;
    std::vector<Totals> left_; ///< of every place
};

} // namespace ROCALG_920
