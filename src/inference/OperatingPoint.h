#pragma once

#include "numeric/Int128.h"
#include "summary/CutOffCounts.h"

#include <cmath>
#include <cstdint>

/// The rates at a cut-off, and which cut-offs are the best.
namespace ROCALG_920 {

/// A cut-off with the exact counts of its classification. Rates are asked for where both states occur.
struct OperatingPoint {
    double cutOff;
    CutOffCounts counts;
};

[[nodiscard]] inline double sensitivity(const CutOffCounts& counts) noexcept
{
    return static_cast<double>(counts.truePositives) / static_cast<double>(counts.positives());
}

[[nodiscard]] inline double specificity(const CutOffCounts& counts) noexcept
{
    return static_cast<double>(counts.trueNegatives) / static_cast<double>(counts.negatives());
}

/// TP N - FP P: Youden's index times P N, exactly. It is TP TN - FP FN, too.
[[nodiscard]] inline Int128 youdenTimesPairs(const CutOffCounts& counts) noexcept
{
    return Int128{counts.truePositives} * counts.negatives() - Int128{counts.falsePositives} * counts.positives();
}

/// Youden's index.
[[nodiscard]] inline double youdenIndex(double sensitivity, double specificity) noexcept
{
    return sensitivity - (1.0 - specificity);
}

/// Keeps the Kolmogorov-Smirnov maximum, the largest Youden index, over successive cut-offs.
class KolmogorovSmirnov {
public:
    /// Is this index the maximum so far, as far as rounding can tell?
    [[nodiscard]] bool isTie(double youden) const noexcept { return std::abs(youden - maximum_) <= tieTolerance; }
    /// Of tied cut-offs the last one is kept, or the first. True when there is a new maximum.
    bool take(double cutOff, double youden, bool lastOfTies) noexcept
    {
        const bool higher = youden - maximum_ > tieTolerance;
        if (higher || (lastOfTies && isTie(youden)))
            cutOff_ = cutOff;
        if (higher)
            maximum_ = youden;
        return higher;
    }
    [[nodiscard]] double maximum() const noexcept { return maximum_; } ///< -1 when no cut-off was taken
    [[nodiscard]] double cutOff() const noexcept { return cutOff_; }   ///< where it is reached

private:
    static constexpr double tieTolerance = 1e-14;

    double maximum_ = -1.0;
    double cutOff_ = 0.0;
};

} // namespace ROCALG_920
