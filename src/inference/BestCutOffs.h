#pragma once

#include "inference/OperatingPoint.h"
#include "summary/CurveSweep.h"

#include <vector>

namespace ROCALG_920 {

/// Keeps all cut-offs at which Youden's index ties with the Kolmogorov-Smirnov maximum, in the order in which they are
/// taken. One pass: what no longer ties when the maximum rises is dropped, and what never tied cannot tie later.
class BestCutOffs {
public:
    /// Both states occur in the counts.
    void take(const OperatingPoint& point)
    {
        const double youden = youdenOf(point);
        if (ks_.take(point.cutOff, youden, false))
            std::erase_if(points_, [&](const OperatingPoint& earlier) { return !ks_.isTie(youdenOf(earlier)); });
        if (ks_.isTie(youden))
            points_.push_back(point);
    }
    [[nodiscard]] const std::vector<OperatingPoint>& points() const noexcept { return points_; }

private:
    [[nodiscard]] static double youdenOf(const OperatingPoint& point) noexcept
    {
        return youdenIndex(sensitivity(point.counts), specificity(point.counts));
    }

    KolmogorovSmirnov ks_;
    std::vector<OperatingPoint> points_;
};

/// The best cut-offs of the curve of a sample, ascending. Empty without both states; throws std::bad_alloc only.
template <ValueWalk Walk>
[[nodiscard]] std::vector<OperatingPoint> bestCutOffs(const Walk& values, const CurveTotals& totals,
                                                      CurveOptions options)
{
    if (!totals.counts.bothStates())
        return {};
    BestCutOffs best;
    forEachCutOff(values, totals, options, [&](double cutOff, const CutOffCounts& counts) {
        best.take({cutOff, counts});
    });
    return best.points();
}

} // namespace ROCALG_920
