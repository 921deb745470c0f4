#pragma once

#include <utility>

namespace ROCALG_920 {

class ROCSpace;

/// Area statistics of one test variable in one group, as the rest of the system reads them.
///
/// Everything is computed when the object is made. What could not be computed holds the missing value.
class ROCStats {
public:
    virtual ~ROCStats();

    /// Index of the test variable of the space.
    [[nodiscard]] virtual int getTestVarInd() const = 0;
    /// Area under the ROC curve, in [0, 1].
    [[nodiscard]] virtual double getArea() const = 0;
    /// 2 * area - 1.
    [[nodiscard]] virtual double getGiniIndex() const = 0;
    /// Standard error of the area; its variance in ROCPairedStats.
    [[nodiscard]] virtual double getStdError() const = 0;
    /// Two-sided significance against the area 0.5.
    [[nodiscard]] virtual double getAsymptoticSignificant() const = 0;
    /// (lower, upper), not clipped to [0, 1].
    [[nodiscard]] virtual std::pair<double, double> getConfidenceInterval() const = 0;
    /// The space that the statistics were computed from.
    [[nodiscard]] virtual ROCSpace& getROCSpace() = 0;
};

} // namespace ROCALG_920
