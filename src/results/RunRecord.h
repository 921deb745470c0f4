#pragma once

#include "space/ROCBitSet.h"
#include "space/ROCSpace.h"
#include "stats/ROCStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <cstddef>
#include <vector>

namespace ROCALG_920 {

/// A record as every run makes it: with what the interface does not tell of its curves. Callers within the library
/// tell it in their own way.
class RunRecord final : public ROCOutBase {
public:
    RunRecord(int testVarInd, ROCStats& stats, bool distributionChanged)
        : ROCOutBase(testVarInd, stats, distributionChanged), counts_(stats.getROCSpace().takeCounts())
    {
    }
    RunRecord(int testVarInd, int groupVarInd, ROCConst_920::Operation op, double groupValue, ROCStats& stats,
              bool distributionChanged)
        : ROCOutBase(testVarInd, groupVarInd, op, groupValue, stats, distributionChanged),
          counts_(stats.getROCSpace().takeCounts())
    {
    }

    /// The record as what it is; it comes from a run.
    [[nodiscard]] static const RunRecord& of(const ROCOutBase& record) noexcept
    {
        return static_cast<const RunRecord&>(record);
    }

    /// Parallel to getSensitivitySpecificity().
    [[nodiscard]] const std::vector<CutOffCounts>& counts() const noexcept { return counts_; }
    /// Is this point of getPrecisionRecallDraw() drawn between measured ones?
    [[nodiscard]] bool isInterpolated(std::size_t point) const noexcept
    {
        return prInterpolationFlag_->get(static_cast<int>(point));
    }

private:
    std::vector<CutOffCounts> counts_;
};

} // namespace ROCALG_920
