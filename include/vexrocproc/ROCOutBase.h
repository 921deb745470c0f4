#pragma once

#include "vexrocproc/ROCConst.h"

#include <iosfwd>
#include <memory>
#include <utility>
#include <vector>

namespace VexXML_920 {
class VexVarList;
}

namespace ROCALG_920 {

class ROCBitSet;
class ROCSpace;
class ROCStats;

/// Result of one test variable in one group: the counts, the ROC curve, the Kolmogorov-Smirnov maximum, the
/// precision-recall points and the area under the ROC curve.
///
/// Life: complete when the constructor returns, and never changes. The statistics and their
/// space may go. The driver that made a record owns it.
/// Shapes: the (sensitivity, specificity) list runs parallel to the cut-offs, which are ascending and in the unit of
/// the test variable. Shares and areas are in [0, 1]; the confidence interval is not clipped to it.
/// Failure: told by values. What could not be computed holds the missing value, a list is empty.
class [[gnu::visibility("default")]] ROCOutBase
{
public:
    /// A record of all cases: group variable -1, operation Equal, group value missing.
    ROCOutBase(int testVarInd, ROCStats& stats, bool distributionChanged);
    /// A record of the cases whose value of the group variable relates to `groupValue` as `op` says.
    ROCOutBase(int testVarInd, int groupVarInd, ROCConst_920::Operation op, double groupValue, ROCStats& stats,
               bool distributionChanged);
    virtual ~ROCOutBase();
    ROCOutBase(const ROCOutBase&) = delete;
    ROCOutBase& operator=(const ROCOutBase&) = delete;

    /// Position of the test variable in the host's variable list.
    [[nodiscard]] int getTestVarInd() const noexcept { return testVarInd_; }
    /// Position of the group variable; -1 without a group.
    [[nodiscard]] int getGroupVarInd() const noexcept { return groupVarInd_; }
    /// The value that the group is defined by; missing without a group.
    [[nodiscard]] double getGroupValue() const noexcept { return groupValue_; }
    [[nodiscard]] ROCConst_920::Operation getGroupValueOperation() const noexcept { return groupValueOperation_; }
    /// Number of positive cases, unweighted.
    [[nodiscard]] int getPositiveCount() const noexcept { return positiveCount_; }
    /// Number of negative cases, unweighted.
    [[nodiscard]] int getNegativeCount() const noexcept { return negativeCount_; }
    /// Sum of the frequency weights of the positive cases.
    [[nodiscard]] double getPosFreqCount() const noexcept { return posFreqCount_; }
    /// Sum of the frequency weights of the negative cases.
    [[nodiscard]] double getNegFreqCount() const noexcept { return negFreqCount_; }
    /// There is no positive or no negative case, and so no area.
    [[nodiscard]] bool isZeroCountExist() const noexcept { return zeroCountExist_; }
    /// Some test value occurs with both states.
    [[nodiscard]] bool existTies() const noexcept { return ties_; }
    /// The bi-negative exponential assumption was replaced for the run. (Spelled so in the interface.)
    [[nodiscard]] bool isDistrbutionChanged() const noexcept { return distributionChanged_; }
    [[nodiscard]] const std::vector<double>& getCutOffPoints() const noexcept { return cutOffPoints_; }
    [[nodiscard]] const std::vector<std::pair<double, double>>& getSensitivitySpecificity() const noexcept
    {
        return sensSpec_;
    }
    /// (Kolmogorov-Smirnov maximum, its cut-off); (-1, 0) when it was not computed.
    [[nodiscard]] std::pair<double, double> getKolmogorovSmirnov() const noexcept { return {ksMaximum_, ksCutOff_}; }
    /// (precision, recall) of all points, interpolated ones included: for drawing the curve.
    [[nodiscard]] const std::vector<std::pair<double, double>>& getPrecisionRecallDraw() const noexcept
    {
        return precisionRecallDraw_;
    }
    /// (precision, recall) of the measured points only, in the same order.
    [[nodiscard]] const std::vector<std::pair<double, double>>& getPrecisionRecallCoordinates() const noexcept
    {
        return precisionRecallCoordinates_;
    }
    /// Area under the ROC curve.
    [[nodiscard]] double getArea() const noexcept { return area_; }
    /// 2 * area - 1.
    [[nodiscard]] double getGiniIndex() const noexcept { return giniIndex_; }
    /// Standard error of the area, for paired statistics as well.
    [[nodiscard]] double getStdError() const noexcept { return stdError_; }
    /// Two-sided significance against the area 0.5.
    [[nodiscard]] double getAsymptoticSig() const noexcept { return asymptoticSig_; }
    [[nodiscard]] double getCILower() const noexcept { return ciLower_; }
    [[nodiscard]] double getCIUpper() const noexcept { return ciUpper_; }

    /// Writes the record as text, every part of it, whatever was asked for. Numbers take the format of the stream,
    /// except the lists of sensitivities, specificities, precisions and recalls: these always have six significant
    /// digits and a decimal point. A group value shows as its label when its variable has labels and it is within
    /// the range of int. Throws std::out_of_range when an index is not one of the list's variables.
    void Display(std::ostream & out, const VexXML_920::VexVarList& varList) const;

private:
    friend class RunRecord;

    [[gnu::visibility("hidden")]] void init(int testVarInd, int groupVarInd, ROCConst_920::Operation op,
                                            double groupValue, ROCStats& stats, bool distributionChanged);
    [[gnu::visibility("hidden")]] void takeCurve(ROCSpace & space);
    [[gnu::visibility("hidden")]] void copyArea(const ROCStats& stats);

    int testVarInd_;
    int groupVarInd_;
    double groupValue_;
    ROCConst_920::Operation groupValueOperation_;
    bool ties_;
    int positiveCount_;
    int negativeCount_;
    double posFreqCount_;
    double negFreqCount_;
    std::vector<double> cutOffPoints_;
    std::vector<std::pair<double, double>> sensSpec_;
    double ksMaximum_;
    double ksCutOff_;
    std::vector<std::pair<double, double>> precisionRecallDraw_;
    std::vector<std::pair<double, double>> precisionRecallCoordinates_;
    double area_;
    double giniIndex_;
    double stdError_;
    double asymptoticSig_;
    double ciLower_;
    double ciUpper_;
    bool distributionChanged_;
    bool zeroCountExist_;
    std::unique_ptr<ROCBitSet> prInterpolationFlag_; ///< marks the interpolated entries of precisionRecallDraw_
};

} // namespace ROCALG_920
