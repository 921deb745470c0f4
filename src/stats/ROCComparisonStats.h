#pragma once

#include "host/MultiPassRecordIter.h"

#include <utility>

namespace ROCALG_920 {

/// Comparison of two areas under ROC curves.
///
/// Constructed with missing results; computeStats fills them, and fills them the same way when called again.
class ROCComparisonStats {
public:
    virtual ~ROCComparisonStats();

    /// Covariance of the two areas; missing for independent samples.
    [[nodiscard]] virtual double getCovariance() const = 0;
    /// z statistic of the difference, 0 when the areas are equal.
    [[nodiscard]] virtual double getZ() const = 0;
    /// Two-sided significance of z.
    [[nodiscard]] virtual double getZSig() const = 0;
    /// Confidence interval (lower, upper) of the difference.
    [[nodiscard]] virtual std::pair<double, double> getZInterval() const = 0;
    /// True when the comparison was computed; false, and all results stay missing, when a space lacks a state.
    virtual bool computeStats(VexCommon_920::MultiPassRecordIter& iter) = 0;
};

} // namespace ROCALG_920
