#pragma once

#include "stats/ROCComparisonStats.h"

namespace ROCALG_920 {

class ROCIndependentStats;

/// Compares two areas of independent samples.
///
/// Both statistics must outlive the object. Two standard errors of 0 with unequal areas give an infinite z.
class RocIndependCompare : public ROCComparisonStats {
public:
    RocIndependCompare(ROCIndependentStats& first, ROCIndependentStats& second, double confidenceLevel);

    [[nodiscard]] double getCovariance() const override { return covariance_; }
    [[nodiscard]] double getZ() const override { return z_; }
    [[nodiscard]] double getZSig() const override { return zSig_; }
    [[nodiscard]] std::pair<double, double> getZInterval() const override { return {ciLower_, ciUpper_}; }
    /// Does not read the records: independent areas need no further pass.
    bool computeStats(VexCommon_920::MultiPassRecordIter& iter) override;

private:
    double z_;
    double zSig_;
    double covariance_;
    double confidenceLevel_;
    double zCritical_;
    double ciLower_;
    double ciUpper_;
    ROCIndependentStats& first_;
    ROCIndependentStats& second_;
};

} // namespace ROCALG_920
