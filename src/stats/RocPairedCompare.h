#pragma once

#include "host/VexMV.h"
#include "inference/PlacementSums.h"
#include "inference/TestAndInterval.h"
#include "stats/ROCComparisonStats.h"

namespace ROCALG_920 {

class ROCPairedStats;

/// Compares the areas of two test variables measured on the same cases, with the covariance of the areas.
///
/// Both statistics and their spaces must outlive the object.
/// Numbers: over the cases that filled the spaces, in whatever order, every sum is exact, the variance of the
/// difference included: it is formed from the integers, not as a difference of rounded variances, and is exactly 0 for
/// a variable against itself.
/// Failure: with exactly one positive or negative case the covariance and what depends on it are not a number.
/// Source: DeLong, DeLong and Clarke-Pearson (1988), Biometrics 44, 837-845.
class RocPairedCompare : public ROCComparisonStats {
public:
    /// stateVarIndex is the record position of the state, compared exactly with positiveStateValue.
    RocPairedCompare(ROCPairedStats& first, ROCPairedStats& second, bool largerTestMorePositive, double confidenceLevel,
                     int stateVarIndex, double positiveStateValue);

    [[nodiscard]] double getCovariance() const override { return difference_.covariance; }
    [[nodiscard]] double getZ() const override { return test_.z; }
    [[nodiscard]] double getZSig() const override { return test_.significance; }
    [[nodiscard]] std::pair<double, double> getZInterval() const override { return {test_.lower, test_.upper}; }
    /// Standard error of the difference of the areas, the one behind z and the interval; missing until computed.
    [[nodiscard]] double getStdErrorDiff() const noexcept { return difference_.stdErrorDiff; }

    /// One pass over the records, from where the iterator stands, or from the first record when it is exhausted.
    /// Records that repeat the cases of the spaces in order of arrival need no search. Others are looked up by value:
    /// one in which a value is NaN is skipped, and a value that a map of components does not hold counts 0 and is
    /// added to the map.
    bool computeStats(VexCommon_920::MultiPassRecordIter& iter) override;
    /// The same over the cases of the two spaces themselves, which must be the same cases in the same order.
    bool computeOverSpaces();

private:
    struct SearchedSums;

    [[nodiscard]] bool hasBothStates() const;
    [[nodiscard]] bool linesUp(std::size_t position, bool positive, double value1, double value2) const;
    void finishBySearch(std::size_t linedUp, const VexCommon_920::Record* next,
                        VexCommon_920::MultiPassRecordIter& iter);
    void finishExactly(const StateSums& products);
    void finish(const PairedDifference& difference);

    double zCritical_;
    int testVarIndex1_;
    int testVarIndex2_;
    int stateVarIndex_;
    double positiveStateValue_;
    bool largerTestMorePositive_;
    ROCPairedStats& first_;
    ROCPairedStats& second_;
    PairedDifference difference_{VexCommon_920::VexMV::Missing(), VexCommon_920::VexMV::Missing()};
    DifferenceTest test_;
};

} // namespace ROCALG_920
