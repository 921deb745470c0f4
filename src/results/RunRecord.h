#pragma once

#include "inference/OperatingPoint.h"
#include "space/SpaceSummary.h"
#include "stats/ROCStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace ROCALG_920 {

/// A record as every run makes it, which keeps what the interface does not tell of its curve: the exact counts at every
/// cut-off, and so the best cut-offs, and which points of the precision-recall curve are measured.
class RunRecord final : public ROCOutBase {
public:
    RunRecord(int testVarInd, ROCStats& stats, bool distributionChanged)
        : ROCOutBase(testVarInd, stats, distributionChanged), counts_(SpaceSummary(stats.getROCSpace()).takeCounts()),
          triples_(SpaceSummary(stats.getROCSpace()).triples())
    {
    }
    RunRecord(int testVarInd, int groupVarInd, ROCConst_920::Operation op, double groupValue, ROCStats& stats,
              bool distributionChanged)
        : ROCOutBase(testVarInd, groupVarInd, op, groupValue, stats, distributionChanged),
          counts_(SpaceSummary(stats.getROCSpace()).takeCounts()), triples_(SpaceSummary(stats.getROCSpace()).triples())
    {
    }

    /// What a record that comes from a run is.
    [[nodiscard]] static const RunRecord& of(const ROCOutBase& record) noexcept
    {
        return static_cast<const RunRecord&>(record);
    }

    /// The cut-off i, which is below the length of getSensitivitySpecificity().
    [[nodiscard]] OperatingPoint point(std::size_t i) const;
    /// All cut-offs at which Youden's index ties with the Kolmogorov-Smirnov maximum, ascending; empty without a curve.
    [[nodiscard]] std::vector<OperatingPoint> bestCutOffs() const;
    /// Is the point i of getPrecisionRecallDraw() interpolated? The others are measured, one per cut-off, in order.
    [[nodiscard]] bool isInterpolated(std::size_t i) const noexcept;
    /// How its cases are ordered, also without a curve; none without both states.
    [[nodiscard]] const std::optional<OrderedTriples>& triples() const noexcept { return triples_; }

private:
    std::vector<ClassifiedPositive> counts_; ///< parallel to getSensitivitySpecificity()
    std::optional<OrderedTriples> triples_;
};

} // namespace ROCALG_920
