#include "results/RunRecord.h"

#include "inference/BestCutOffs.h"
#include "space/ROCBitSet.h"

namespace ROCALG_920 {

OperatingPoint RunRecord::point(std::size_t i) const
{
    const auto [truePositives, falsePositives] = counts_[i];
    return {getCutOffPoints()[i],
            {truePositives, falsePositives, getNegativeCount() - falsePositives, getPositiveCount() - truePositives}};
}

std::vector<OperatingPoint> RunRecord::bestCutOffs() const
{
    BestCutOffs best;
    for (std::size_t i = 0; i < counts_.size(); ++i)
        best.take(point(i));
    return best.points();
}

bool RunRecord::isInterpolated(std::size_t i) const noexcept { return prInterpolationFlag_->get(static_cast<int>(i)); }

} // namespace ROCALG_920
