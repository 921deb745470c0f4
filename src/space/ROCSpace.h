#pragma once

#include "space/ROCBitSet.h"
#include "space/ROCData.h"
#include "summary/CurveSweep.h"
#include "summary/Observations.h"
#include "summary/SortedValues.h"
#include "vexrocproc/ROCConst.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace ROCALG_920 {

/// The observations on the positive side of a cut-off.
struct ClassifiedPositive {
    int truePositives;
    int falsePositives;
};

/// The curve of one test variable as lists. Empty without a curve; the lists that were not asked for are empty.
struct CurveLists {
    std::vector<double> cutOffPoints;                       ///< ascending
    std::vector<std::pair<double, double>> sensSpec;        ///< (sensitivity, specificity), parallel to cutOffPoints
    double ksMaximum = -1.0;                                ///< Kolmogorov-Smirnov maximum; -1 when not computed
    double ksCutOff = 0.0;                                  ///< the cut-off where it is reached
    std::vector<std::pair<double, double>> precisionRecall; ///< (precision, recall)
    bool tiesInPR = false;
    ROCBitSet prInterpolationFlag; ///< marks the interpolated entries of precisionRecall
};

/// Collects the observations of one test variable in one group and turns them, once, into its empirical ROC curve
/// and its precision-recall curve.
///
/// Life: open until the first summary read that finds at least 3 observations; that read orders the observations and
/// closes the space for good. Frequency weights (whole cases) add to the frequency counts only: in the curve every
/// observation counts once.
/// Shapes: k distinct test values give k + 1 cut-offs, ascending, in the unit of the test variable; the sensitivity
/// and specificity list runs parallel to them. Sensitivity, specificity, precision and recall are in [0, 1].
/// Cost: one sort. The lists are made when the first of them is read; the walks over values and cut-offs need none.
/// Failure: told by values. Fewer than 3 observations, or one state only, leave all lists empty. Memory that runs out
/// throws std::bad_alloc and leaves the space as it was before the call.
/// Source: Fawcett (2006), An introduction to ROC analysis, Pattern Recognition Letters 27, 861-874.
class ROCSpace {
public:
    ROCSpace(bool includeCutOff, bool largerTestMorePositive, bool needPR, bool needROC, bool interpolateAlongTP);
    virtual ~ROCSpace() = default;
    ROCSpace(const ROCSpace&) = default;
    ROCSpace& operator=(const ROCSpace&) = default;
    ROCSpace(ROCSpace&&) = default;
    ROCSpace& operator=(ROCSpace&&) = default;

    /// Adds one case. False, and nothing changes, for a weight below 1, a test value that is NaN, a closed space, one
    /// that borrows its cases, or one that holds as many observations as an int can count.
    bool update(bool positive, double value, int weight);
    /// Makes room for so many observations in all.
    void reserve(std::size_t count) { observations_.reserve(count); }
    /// Replaces the cases of an open space by those of two arrays, each of weight 1, without copying them: they must outlive
    /// the space. False, and nothing changes, when a test value is NaN.
    bool borrow(const BorrowedColumns& columns);

    void setTestVarInd(int index) noexcept { testVarInd_ = index; }
    void setGroup(int groupVar, ROCConst_920::Operation op, double value) noexcept;

    // Summary reads. Not const: the first one closes the space, and the lists are made on demand. The references
    // stay valid as long as the space lives, and show the same lists until takeCurve() hands those over.

    /// The observations: in arrival order, by ascending value once a curve was built, in the order of
    /// independentSortMethod once area statistics of independent samples were computed.
    [[nodiscard]] const std::vector<ROCData>& getROCData();
    [[nodiscard]] const std::vector<double>& getCutOffPoints();
    /// (sensitivity, specificity) at each cut-off.
    [[nodiscard]] const std::vector<std::pair<double, double>>& getSensitivitySpecificity();
    /// (precision, recall): measured points in ascending order of cut-off, each preceded by the interpolated ones.
    [[nodiscard]] const std::vector<std::pair<double, double>>& getPrecisionRecall();
    /// (Kolmogorov-Smirnov maximum, its cut-off); (-1, 0) when it was not computed.
    [[nodiscard]] std::pair<double, double> getKolmogorovSmirnov();
    /// Some test value occurs with both states.
    [[nodiscard]] bool existTies();
    /// Some step between cut-offs moved several true positives between unequal precisions.
    [[nodiscard]] bool existTiesInPR();
    /// Marks the interpolated entries of getPrecisionRecall().
    [[nodiscard]] ROCBitSet getPRInterpolationFlag();

    /// Hands over all lists of the curve at once; a later read makes them anew.
    [[nodiscard]] CurveLists takeCurve();
    /// Hands over the counts behind the sensitivity and specificity list, parallel to it; once per making of the lists.
    [[nodiscard]] std::vector<ClassifiedPositive> takeCounts() { return std::exchange(counts_, {}); }

    /// Number of negative observations, unweighted. (Spelled so in the interface.)
    [[nodiscard]] int getNegtiveCount() const noexcept { return negativeCount_; }
    [[nodiscard]] int getPositiveCount() const noexcept { return positiveCount_; }
    [[nodiscard]] bool hasBothStates() const noexcept { return positiveCount_ > 0 && negativeCount_ > 0; }
    /// Sum of the weights of the negative observations.
    [[nodiscard]] double getNegFreqCount() const noexcept { return negFreqCount_; }
    [[nodiscard]] double getPosFreqCount() const noexcept { return posFreqCount_; }
    [[nodiscard]] int getTestVar() const noexcept { return testVarInd_; }
    [[nodiscard]] int getGroupVar() const noexcept { return groupVar_; }
    [[nodiscard]] ROCConst_920::Operation getGroupOp() const noexcept { return groupOp_; }
    [[nodiscard]] double getGroupValue() const noexcept { return groupValue_; }

    /// Runs the summary, as every summary read does.
    void finish() { finishUpdate(); }

    // Sweeps, for readers that want the numbers and not the lists.

    /// The observations in arrival order, whatever order getROCData() shows.
    [[nodiscard]] const Observations& observations() const noexcept { return observations_; }
    /// Calls visit(DistinctValue) for every distinct test value, ascending.
    template <class Visit>
    void forEachDistinctValue(Visit&& visit) const;
    /// 0 without a curve. Closes the space, as every summary read does.
    [[nodiscard]] std::size_t countCutOffs();
    /// Calls visit(cut-off, CutOffCounts) for every cut-off in ascending order; never without a curve.
    template <class Visit>
    void forEachCutOff(Visit&& visit) const;
    /// The order of independentSortMethod holds from here on.
    void orderByState() { setOrder(Order::ByState); }

private:
    enum class Order { Arrival, ByValue, ByState };

    /// What one walk over the distinct values of a curve tells.
    struct DistinctSummary {
        std::size_t count = 0;
        bool ties = false; ///< some value occurs with both states
    };

    bool finishUpdate();
    DistinctSummary distinctSummary();
    const CurveLists& curveLists();
    [[nodiscard]] CurveLists computeStats(bool needPR, bool needROC);
    [[nodiscard]] std::vector<ROCData> listObservations(Order order) const;
    void setOrder(Order order);

    Observations observations_;
    std::optional<valuesort::SortedValues> sorted_; ///< with the curve
    std::optional<DistinctSummary> distinct_;       ///< made on demand

    std::vector<ROCData> data_;              ///< what getROCData() shows, made on demand in order_
    CurveLists lists_;                       ///< made on demand
    std::vector<ClassifiedPositive> counts_; ///< made with them

    int testVarInd_ = -1;
    int groupVar_ = -1;
    ROCConst_920::Operation groupOp_ = ROCConst_920::Equal;
    double groupValue_;
    int negativeCount_ = 0;
    int positiveCount_ = 0;
    double negFreqCount_ = 0.0;
    double posFreqCount_ = 0.0;
    Order order_ = Order::Arrival;
    bool includeCutOff_;
    bool largerTestMorePositive_;
    bool needPR_;
    bool needROC_;
    bool interpolateAlongTP_;
    bool finished_ = false;
    bool listsReady_ = false;
};

// Inline: a record pass calls it for every record and variable.
inline bool ROCSpace::update(bool positive, double value, int weight)
{
    if (weight < 1 || finished_ || std::isnan(value) || !observations_.hasRoom())
        return false;
    if (!data_.empty()) // whoever holds the list sees the new case
        data_.push_back({positive, value});
    observations_.add(positive, value);
    (positive ? positiveCount_ : negativeCount_) += 1;
    (positive ? posFreqCount_ : negFreqCount_) += weight;
    return true;
}

template <class Visit>
void ROCSpace::forEachDistinctValue(Visit&& visit) const
{
    observations_.visit([&](const auto& columns) {
        if (sorted_)
            sorted_->withWalk(columns, [&](auto walk) { forEachValue(walk, visit); });
        else
            valuesort::forEachDistinctValue(columns, visit);
    });
}

template <class Visit>
void ROCSpace::forEachCutOff(Visit&& visit) const
{
    if (!sorted_)
        return;
    const CurveOptions options{includeCutOff_, largerTestMorePositive_};
    observations_.visit([&](const auto& columns) {
        const auto [lowest, highest] = sorted_->range(columns);
        const CurveTotals totals{lowest, highest, {positiveCount_, negativeCount_}};
        sorted_->withWalk(columns, [&](auto walk) { ROCALG_920::forEachCutOff(walk, totals, options, visit); });
    });
}

} // namespace ROCALG_920
