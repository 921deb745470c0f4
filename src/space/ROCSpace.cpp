#include "space/ROCSpace.h"

#include "host/VexMV.h"
#include "inference/OperatingPoint.h"
#include "inference/PrecisionRecallSweep.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

ROCSpace::ROCSpace(bool includeCutOff, bool largerTestMorePositive, bool needPR, bool needROC, bool interpolateAlongTP)
    : groupValue_(VexMV::Missing()), includeCutOff_(includeCutOff), largerTestMorePositive_(largerTestMorePositive),
      needPR_(needPR), needROC_(needROC), interpolateAlongTP_(interpolateAlongTP)
{
}

void ROCSpace::setGroup(int groupVar, ROCConst_920::Operation op, double value) noexcept
{
    groupVar_ = groupVar;
    groupOp_ = op;
    groupValue_ = value;
}

/// The one step from observations to the summary. False while there are too few of them: the space stays open then.
bool ROCSpace::finishUpdate()
{
    if (finished_)
        return true;
    if (observations_.counts().cases() < leastCurveCases)
        return false;
    if ((needROC_ || needPR_) && hasCurve(observations_.counts())) {
        sorted_ = sortedValues(observations_);
        setOrder(Order::ByValue);
    }
    finished_ = true;
    return true;
}

/// All zero without a curve.
ROCSpace::DistinctSummary ROCSpace::distinctSummary()
{
    if (!finishUpdate() || !sorted_)
        return {};
    if (!distinct_) {
        DistinctSummary summary;
        const auto take = [&](const DistinctValue& x) {
            ++summary.count;
            summary.ties = summary.ties || (x.positives > 0 && x.negatives > 0);
        };
        withWalk([&](const auto& walk) { forEachValue(walk, take); });
        distinct_ = summary;
    }
    return *distinct_;
}

const CurveLists& ROCSpace::curveLists()
{
    if (finishUpdate() && !listsReady_) {
        lists_ = sorted_ ? computeStats(needPR_, needROC_) : CurveLists();
        listsReady_ = true;
    }
    return lists_;
}

CurveLists ROCSpace::takeCurve()
{
    curveLists();
    listsReady_ = false;
    return std::exchange(lists_, CurveLists());
}

/// One pass over the cut-offs: pairs, Kolmogorov-Smirnov maximum and precision-recall points, as far as needed.
CurveLists ROCSpace::computeStats(bool needPR, bool needROC)
{
    const std::size_t cutOffs = distinctSummary().count + 1;
    KolmogorovSmirnov ks;
    PrecisionRecallSweep prSweep(interpolateAlongTP_);
    CurveLists lists;
    std::vector<ClassifiedPositive> counts;
    counts.reserve(needROC ? cutOffs : 0);
    lists.cutOffPoints.reserve(cutOffs);
    lists.sensSpec.reserve(needROC ? cutOffs : 0);
    lists.precisionRecall.reserve(needPR ? cutOffs : 0);

    const auto addPoint = [&](double precision, double recall, bool interpolated) {
        if (interpolated)
            lists.prInterpolationFlag.set(static_cast<int>(lists.precisionRecall.size()), true);
        lists.precisionRecall.emplace_back(precision, recall);
    };
    const CurveOptions options{includeCutOff_, largerTestMorePositive_};
    forEachCutOff(observations_, *sorted_, options, [&](double cutOff, const CutOffCounts& result) {
        lists.cutOffPoints.push_back(cutOff);
        if (needROC) {
            counts.push_back({static_cast<int>(result.truePositives), static_cast<int>(result.falsePositives)});
            const auto& [sens, spec] = lists.sensSpec.emplace_back(sensitivity(result), specificity(result));
            ks.take(cutOff, youdenIndex(sens, spec), largerTestMorePositive_);
        }
        if (needPR)
            prSweep.step(result, addPoint);
    });
    counts_ = std::move(counts);
    lists.ksMaximum = ks.maximum();
    lists.ksCutOff = ks.cutOff();
    lists.tiesInPR = prSweep.tiesSeen();
    if (const auto precision = prSweep.lentPrecision(largerTestMorePositive_))
        (largerTestMorePositive_ ? lists.precisionRecall.back() : lists.precisionRecall.front()).first = *precision;
    return lists;
}

const std::vector<ROCData>& ROCSpace::getROCData()
{
    finishUpdate();
    if (data_.size() != observations_.size())
        data_ = listObservations(order_);
    return data_;
}

std::vector<ROCData> ROCSpace::listObservations(Order order) const
{
    std::vector<ROCData> list(observations_.size());
    if (order == Order::Arrival) {
        for (std::size_t i = 0; i < list.size(); ++i)
            list[i] = {observations_.positive(i), observations_.value(i)};
        return list;
    }
    auto positive = list.begin();
    auto negative = list.begin() + (order == Order::ByState ? observations_.counts().positives : 0);
    const auto append = [&](const DistinctValue& distinct) {
        positive = std::fill_n(positive, distinct.positives, ROCData{true, distinct.value});
        if (order == Order::ByValue)
            negative = positive;
        negative = std::fill_n(negative, distinct.negatives, ROCData{false, distinct.value});
        if (order == Order::ByValue)
            positive = negative;
    };
    withWalk([&](const auto& walk) { forEachValue(walk, append); });
    return list;
}

/// From here on getROCData() shows this order, also to whoever holds the list already.
void ROCSpace::setOrder(Order order)
{
    if (!data_.empty())
        data_ = listObservations(order);
    order_ = order;
}

const std::vector<double>& ROCSpace::getCutOffPoints() { return curveLists().cutOffPoints; }

const std::vector<std::pair<double, double>>& ROCSpace::getSensitivitySpecificity() { return curveLists().sensSpec; }

const std::vector<std::pair<double, double>>& ROCSpace::getPrecisionRecall() { return curveLists().precisionRecall; }

std::pair<double, double> ROCSpace::getKolmogorovSmirnov()
{
    const CurveLists& lists = curveLists();
    return {lists.ksMaximum, lists.ksCutOff};
}

bool ROCSpace::existTies() { return distinctSummary().ties; }

bool ROCSpace::existTiesInPR() { return curveLists().tiesInPR; }

ROCBitSet ROCSpace::getPRInterpolationFlag() { return curveLists().prInterpolationFlag; }

} // namespace ROCALG_920
