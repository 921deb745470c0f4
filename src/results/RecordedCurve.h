#pragma once

#include "inference/OperatingPoint.h"

#include <cstddef>
#include <vector>

namespace ROCALG_920 {

class ROCOutBase;

/// What a finished record tells about its curve beyond its lists: the exact counts at every cut-off, the best cut-offs,
/// and which points of the precision-recall curve are measured. The record must outlive the object.
class RecordedCurve {
public:
    explicit RecordedCurve(const ROCOutBase& record) : record_(record) {}

    /// The cut-off i of the record's lists, i below the length of getSensitivitySpecificity().
    [[nodiscard]] OperatingPoint point(std::size_t i) const;
    /// All cut-offs at which Youden's index ties with the Kolmogorov-Smirnov maximum, ascending; empty without a curve.
    [[nodiscard]] std::vector<OperatingPoint> bestCutOffs() const;
    /// Is the point i of getPrecisionRecallDraw() interpolated? The others are measured, one per cut-off, in order.
    [[nodiscard]] bool isInterpolated(std::size_t i) const;

private:
    const ROCOutBase& record_;
};

} // namespace ROCALG_920
