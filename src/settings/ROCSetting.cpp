#include "vexrocproc/ROCSetting.h"

#include <utility>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

ROCSetting::ROCSetting() = default;
ROCSetting::~ROCSetting() = default;

void ROCSetting::setStateVar(int stateVar, double positiveValue)
{
    stateVar_ = stateVar;
    stateValue_ = positiveValue;
}

void ROCSetting::setTestVars(const std::vector<int>& testVars) { testVars_ = testVars; }

void ROCSetting::setCutOffGroupVar(int groupVar, double cutValue)
{
    defineGroup(groupVar, ROCConst_920::CutPointGroup, cutValue, {});
}

void ROCSetting::setMidPointGroupVar(int groupVar)
{
    defineGroup(groupVar, ROCConst_920::MidPointGroup, VexMV::Missing(), {});
}

void ROCSetting::setSelectGroupVar(int groupVar, double value1, double value2)
{
    defineGroup(groupVar, ROCConst_920::SelectGroup, VexMV::Missing(), {value1, value2});
}

void ROCSetting::defineGroup(int groupVar, ROCConst_920::GroupType type, double cutValue,
                             std::vector<double> selectValues)
{
    groupVar_ = groupVar;
    groupType_ = type;
    groupCutValue_ = cutValue;
    groupSelectValues_ = std::move(selectValues);
}

void ROCSetting::setConfidenceLevel(double level)
{
    if (level > 0.0 && level < 1.0) // false for NaN
        confidenceLevel_ = level;
}

void ROCSetting::setDistribution(ROCConst_920::Distribution distribution) { distribution_ = distribution; }

void ROCSetting::setClassification(ROCConst_920::Classification classification) { classification_ = classification; }

void ROCSetting::setDirection(ROCConst_920::Direction direction) { direction_ = direction; }

void ROCSetting::setNeedPR(bool needPR) { needPR_ = needPR; }

void ROCSetting::setNeedROC(bool needROC) { needROC_ = needROC; }

void ROCSetting::setComparisonType(ROCConst_920::ComparisonType type) { comparisonType_ = type; }

void ROCSetting::setPRInterpolationType(ROCConst_920::PRInterpolation interpolation)
{
    prInterpolation_ = interpolation;
}

void ROCSetting::setFrequencyWeightVar(int weightVar) { frequencyWeightVar_ = weightVar; }

} // namespace ROCALG_920
