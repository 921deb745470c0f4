#pragma once

#include "inference/TestAndInterval.h"
#include "space/ROCData.h"
#include "stats/ROCStats.h"
#include "vexrocproc/ROCConst.h"

#include <utility>

namespace ROCALG_920 {

/// Area under the empirical ROC curve of an independent sample with its standard error.
///
/// Life: complete when the constructor returns. The space must outlive the object; its list of observations takes the
/// order of independentSortMethod.
/// Numbers: every sum over the observations is exact (integers), so that the order of the cases does not matter and
/// each statistic is within a few units in the last place of its formula's exact value.
/// Failure: without a positive or a negative observation every statistic is the missing value.
/// Source: Hanley and McNeil (1982), The meaning and use of the area under a receiver operating characteristic (ROC)
/// curve, Radiology 143, 29-36.
class ROCIndependentStats : public ROCStats {
public:
    /// confidenceLevel in (0, 1). Throws std::bad_alloc only.
    ROCIndependentStats(ROCSpace& space, ROCConst_920::Distribution distribution, bool largerTestMorePositive,
                        double confidenceLevel);

    [[nodiscard]] int getTestVarInd() const override;
    [[nodiscard]] double getArea() const override { return test_.area; }
    [[nodiscard]] double getGiniIndex() const override { return test_.giniIndex; }
    [[nodiscard]] double getStdError() const override { return test_.stdError; }
    [[nodiscard]] double getAsymptoticSignificant() const override { return test_.significance; }
    [[nodiscard]] std::pair<double, double> getConfidenceInterval() const override
    {
        return {test_.lower, test_.upper};
    }
    [[nodiscard]] ROCSpace& getROCSpace() override { return space_; }

private:
    ROCSpace& space_;
    AreaTest test_;
};

/// Positive observations before negative ones, each state ascending by value.
[[nodiscard]] inline bool independentSortMethod(const ROCData& a, const ROCData& b) noexcept
{
    return a.positive != b.positive ? a.positive : a.value < b.value;
}

/// Ascending order of values.
[[nodiscard]] inline bool dCompare(double a, double b) noexcept { return a < b; }

} // namespace ROCALG_920
