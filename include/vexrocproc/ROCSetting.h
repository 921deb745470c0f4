#pragma once

#include "host/VexMV.h"
#include "vexrocproc/ROCConst.h"

#include <iosfwd>
#include <vector>

namespace ROCALG_920 {

/// What an analysis is asked to do: the variables, the groups, the comparison and the options of the curves.
///
/// Life: a value type. The host fills it through the setters; the facade keeps a copy.
/// Variables are named by their position in the host's variable list and in every record, from 0; -1 means none.
/// Group type, cut value and select values always change together: a cut point has a cut value only, a select group
/// two select values only, a mid point neither. A group that was set cannot be taken back.
/// Failure: the setters report nothing. Settings that do not fit together or with the data end the run with a status.
class [[gnu::visibility("default")]] ROCSetting
{
public:
    ROCSetting();
    virtual ~ROCSetting();
    ROCSetting(const ROCSetting&) = default;
    ROCSetting& operator=(const ROCSetting&) = default;
    ROCSetting(ROCSetting &&) = default;
    ROCSetting& operator=(ROCSetting&&) = default;

    /// The variable with the true state of each case, and its value in the positive cases (compared exactly).
    void setStateVar(int stateVar, double positiveValue);
    /// Replaces the list of test variables. It is kept as given, repetitions included.
    void setTestVars(const std::vector<int>& testVars);
    /// Two groups: below the cut value, and at or above it.
    void setCutOffGroupVar(int groupVar, double cutValue);
    /// Two groups, below and from the middle between the smallest and the largest value of the group variable.
    void setMidPointGroupVar(int groupVar);
    /// Two groups of one value each, in this order; cases with another value are left out.
    void setSelectGroupVar(int groupVar, double value1, double value2);
    /// Level of all confidence intervals. A level that is not strictly between 0 and 1 is ignored.
    void setConfidenceLevel(double level);
    /// Assumption behind the standard error of an area.
    void setDistribution(ROCConst_920::Distribution distribution);
    /// Does a test value equal to a cut-off count as positive?
    void setClassification(ROCConst_920::Classification classification);
    /// Which end of the test scale indicates a positive case.
    void setDirection(ROCConst_920::Direction direction);
    void setNeedPR(bool needPR);
    void setNeedROC(bool needROC);
    void setComparisonType(ROCConst_920::ComparisonType type);
    void setPRInterpolationType(ROCConst_920::PRInterpolation interpolation);
    /// The variable with the number of cases that each record stands for; -1 for no weighting.
    void setFrequencyWeightVar(int weightVar);

    [[nodiscard]] int getStateVar() const noexcept { return stateVar_; }
    /// Value of the state in the positive cases.
    [[nodiscard]] double getValueOfStateVar() const noexcept { return stateValue_; }
    [[nodiscard]] const std::vector<int>& getTestVars() const noexcept { return testVars_; }
    [[nodiscard]] int getGroupVar() const noexcept { return groupVar_; }
    [[nodiscard]] ROCConst_920::GroupType getGroupType() const noexcept { return groupType_; }
    /// The cut value of a cut point; else the missing value.
    [[nodiscard]] double getGroupCutValue() const noexcept { return groupCutValue_; }
    /// The two values of a select group in the order in which they were given; else empty.
    [[nodiscard]] const std::vector<double>& getGroupSelectValues() const noexcept { return groupSelectValues_; }
    /// True for Include only: every other value reads as exclude.
    [[nodiscard]] bool isIncludeCutOff() const noexcept { return classification_ == ROCConst_920::Include; }
    /// True for LargerMorePositive only: every other value reads as smaller.
    [[nodiscard]] bool isLargerTestMorePositive() const noexcept
    {
        return direction_ == ROCConst_920::LargerMorePositive;
    }
    [[nodiscard]] ROCConst_920::Distribution getDistribution() const noexcept { return distribution_; }
    /// The confidence level. (Spelled so in the interface.)
    [[nodiscard]] double getConfidienceLevel() const noexcept { return confidenceLevel_; }
    [[nodiscard]] bool needPR() const noexcept { return needPR_; }
    [[nodiscard]] bool needROC() const noexcept { return needROC_; }
    [[nodiscard]] ROCConst_920::ComparisonType getComparisonType() const noexcept { return comparisonType_; }
    [[nodiscard]] ROCConst_920::PRInterpolation getPRInterpolationType() const noexcept { return prInterpolation_; }
    [[nodiscard]] int getFrequencyWeightVar() const noexcept { return frequencyWeightVar_; }

    /// Writes the settings, one line each, through the host's line display. The stream that was current there is
    /// current again afterwards; when there was none, `out` stays current: call ClearOutStream() before it ends.
    void Display(std::ostream & out) const;

private:
    [[gnu::visibility("hidden")]] void defineGroup(int groupVar, ROCConst_920::GroupType type, double cutValue,
                                                   std::vector<double> selectValues);

    ROCConst_920::Classification classification_ = ROCConst_920::Include;
    ROCConst_920::Direction direction_ = ROCConst_920::LargerMorePositive;
    ROCConst_920::Distribution distribution_ = ROCConst_920::NonParametric;
    bool needPR_ = false;
    double confidenceLevel_ = 0.95;
    std::vector<int> testVars_;
    int groupVar_ = -1;
    ROCConst_920::ComparisonType comparisonType_ = ROCConst_920::NoComparison;
    ROCConst_920::GroupType groupType_ = ROCConst_920::NoGroup;
    double groupCutValue_ = VexCommon_920::VexMV::Missing();
    std::vector<double> groupSelectValues_;
    int stateVar_ = -1;
    double stateValue_ = VexCommon_920::VexMV::Missing();
    bool needROC_ = true;
    ROCConst_920::PRInterpolation prInterpolation_ = ROCConst_920::AlongTP;
    int frequencyWeightVar_ = -1;
};

} // namespace ROCALG_920
