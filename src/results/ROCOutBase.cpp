#include "vexrocproc/ROCOutBase.h"

#include "host/VexMV.h"
#include "inference/TestAndInterval.h"
#include "space/ROCBitSet.h"
#include "space/SpaceSummary.h"
#include "stats/ROCPairedStats.h"
#include "stats/ROCStats.h"

#include <cstddef>
#include <tuple>
#include <utility>

namespace ROCALG_920 {

ROCOutBase::ROCOutBase(int testVarInd, ROCStats& stats, bool distributionChanged)
    : ROCOutBase(testVarInd, -1, ROCConst_920::Equal, VexCommon_920::VexMV::Missing(), stats, distributionChanged)
{
}

ROCOutBase::ROCOutBase(int testVarInd, int groupVarInd, ROCConst_920::Operation op, double groupValue, ROCStats& stats,
                       bool distributionChanged)
{
    init(testVarInd, groupVarInd, op, groupValue, stats, distributionChanged);
}

ROCOutBase::~ROCOutBase() = default;

void ROCOutBase::init(int testVarInd, int groupVarInd, ROCConst_920::Operation op, double groupValue, ROCStats& stats,
                      bool distributionChanged)
{
    testVarInd_ = testVarInd;
    groupVarInd_ = groupVarInd;
    groupValueOperation_ = op;
    groupValue_ = groupValue;
    distributionChanged_ = distributionChanged;
    takeCurve(stats.getROCSpace());
    copyArea(stats);
}

void ROCOutBase::takeCurve(ROCSpace& space)
{
    ties_ = space.existTies();
    positiveCount_ = space.getPositiveCount();
    negativeCount_ = space.getNegtiveCount();
    posFreqCount_ = space.getPosFreqCount();
    negFreqCount_ = space.getNegFreqCount();
    zeroCountExist_ = positiveCount_ == 0 || negativeCount_ == 0;
    CurveLists curve = SpaceSummary(space).takeCurve();
    cutOffPoints_ = std::move(curve.cutOffPoints);
    sensSpec_ = std::move(curve.sensSpec);
    ksMaximum_ = curve.ksMaximum;
    ksCutOff_ = curve.ksCutOff;
    precisionRecallDraw_ = std::move(curve.precisionRecall);
    prInterpolationFlag_ = std::make_unique<ROCBitSet>(std::move(curve.prInterpolationFlag));
    for (std::size_t i = 0; i < precisionRecallDraw_.size(); ++i)
        if (!prInterpolationFlag_->get(static_cast<int>(i)))
            precisionRecallCoordinates_.push_back(precisionRecallDraw_[i]);
}

void ROCOutBase::copyArea(const ROCStats& stats)
{
    area_ = stats.getArea();
    giniIndex_ = stats.getGiniIndex();
    // What paired statistics call their standard error is the variance.
    const bool givesVariance = dynamic_cast<const ROCPairedStats*>(&stats) != nullptr;
    stdError_ = givesVariance ? stdErrorOfVariance(stats.getStdError()) : stats.getStdError();
    asymptoticSig_ = stats.getAsymptoticSignificant();
    std::tie(ciLower_, ciUpper_) = stats.getConfidenceInterval();
}

} // namespace ROCALG_920
