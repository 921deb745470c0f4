#pragma once

#include "inference/OperatingPoint.h"
#include "summary/CurveSweep.h"

#include <compare>
#include <optional>
#include <vector>

/// Which cut-offs are the best by a criterion, decided by integers: no tie is made or broken by rounding.
namespace ROCALG_920 {

class CutOffCriterion {
public:
    enum class Kind {
        youden,      ///< sensitivity + specificity - 1: Youden 1950, Cancer 3, 32-35
        closest,     ///< to the corner of sensitivity and specificity 1: Perkins and Schisterman 2006
        accuracy,    ///< share of right calls
        cost,        ///< sensitivity - h (1 - specificity): Metz 1978, Semin. Nucl. Med. 8, 283-298
        f1,          ///< harmonic mean of sensitivity and ppv
        mcc,         ///< correlation of calls and states
        equal,       ///< sensitivity and specificity alike
        specificity, ///< most sensitivity among those with so much specificity
        sensitivity, ///< most specificity among those with so much sensitivity
    };
    struct Options {
        double share = 0.0;                 ///< of Kind::specificity and Kind::sensitivity
        double costRatio = 1.0;             ///< cost of a missed positive over that of a false alarm
        std::optional<double> prevalence{}; ///< for the cost; that of the sample without it
        double leastSensitivity = 0.0;      ///< for youden
        double leastSpecificity = 0.0;
    };

    /// For samples with these cases of both states.
    CutOffCriterion(Kind kind, const StateCounts& cases, const Options& options);

    /// Does the cut-off take part?
    [[nodiscard]] bool admits(const CutOffCounts& counts) const;
    /// Greater: the first is better. Both take part.
    [[nodiscard]] std::strong_ordering compare(const CutOffCounts& a, const CutOffCounts& b) const;
    /// What is largest, as a number for readers; of closest the distance, of equal the difference, which are smallest.
    [[nodiscard]] double value(const CutOffCounts& counts) const;

private:
    [[nodiscard]] std::strong_ordering compareCosts(const CutOffCounts& a, const CutOffCounts& b) const;

    Kind kind_;
    double costRatio_;
    std::optional<double> weightOfFalse_; ///< h, of a stated prevalence
    double leastPositives_;
    double leastNegatives_;
};

/// The best cut-offs, all ties, in the order in which they come.
class BestByCriterion {
public:
    explicit BestByCriterion(const CutOffCriterion& criterion) : criterion_(criterion) {}
    void take(const OperatingPoint& point)
    {
        if (!criterion_.admits(point.counts))
            return;
        const auto order =
            points_.empty() ? std::strong_ordering::greater : criterion_.compare(point.counts, points_.front().counts);
        if (order > 0)
            points_.clear();
        if (order >= 0)
            points_.push_back(point);
    }
    [[nodiscard]] const std::vector<OperatingPoint>& points() const noexcept { return points_; }

private:
    const CutOffCriterion& criterion_;
    std::vector<OperatingPoint> points_;
};

/// Of tied cut-offs the one that calls fewest cases positive: the highest where larger values are positive.
[[nodiscard]] inline const OperatingPoint& chosen(const std::vector<OperatingPoint>& ties, bool largerIsPositive)
{
    return largerIsPositive ? ties.back() : ties.front();
}

} // namespace ROCALG_920
