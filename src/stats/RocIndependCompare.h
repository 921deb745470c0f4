#pragma once

#include "host/VexMV.h"
#include "inference/TestAndInterval.h"
#include "stats/ROCComparisonStats.h"

namespace ROCALG_920 {

class ROCIndependentStats;

/// Compares two areas of independent samples.
///
/// Both statistics must outlive the object. Two standard errors of 0 with unequal areas give an infinite z.
class RocIndependCompare : public ROCComparisonStats {
public:
    RocIndependCompare(ROCIndependentStats& first, ROCIndependentStats& second, double confidenceLevel);

    [[nodiscard]] double getCovariance() const override { return VexCommon_920::VexMV::Missing(); }
    [[nodiscard]] double getZ() const override { return test_.z; }
    [[nodiscard]] double getZSig() const override { return test_.significance; }
    [[nodiscard]] std::pair<double, double> getZInterval() const override { return {test_.lower, test_.upper}; }
    /// Does not read the records: independent areas need no further pass.
    bool computeStats(VexCommon_920::MultiPassRecordIter& iter) override;

private:
    double zCritical_;
    DifferenceTest test_;
    ROCIndependentStats& first_;
    ROCIndependentStats& second_;
};

} // namespace ROCALG_920
