#include "results/RecordedCurve.h"

#include "inference/BestCutOffs.h"
#include "space/ROCBitSet.h"
#include "vexrocproc/ROCOutBase.h"

namespace ROCALG_920 {

OperatingPoint RecordedCurve::point(std::size_t i) const
{
    const auto& [sensitivity, specificity] = record_.sensSpec_[i];
    const std::int64_t truePositives = countBehind(sensitivity, record_.positiveCount_);
    const std::int64_t trueNegatives = countBehind(specificity, record_.negativeCount_);
    return {
        record_.cutOffPoints_[i],
        {truePositives, record_.negativeCount_ - trueNegatives, trueNegatives, record_.positiveCount_ - truePositives}};
}

std::vector<OperatingPoint> RecordedCurve::bestCutOffs() const
{
    BestCutOffs best;
    for (std::size_t i = 0; i < record_.sensSpec_.size(); ++i)
        best.take(point(i));
    return best.points();
}

bool RecordedCurve::isInterpolated(std::size_t i) const
{
    return record_.prInterpolationFlag_->get(static_cast<int>(i));
}

} // namespace ROCALG_920
