#pragma once

#include "inference/OrderedTriples.h"
#include "space/ROCBitSet.h"
#include "space/ROCData.h"
#include "summary/SortedObservations.h"
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
/// Cost: one sort. The lists are made when the first of them is read; the walks of SpaceSummary need none.
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

    /// Adds one case. False, and nothing changes, for a weight below 1, a test value that is NaN, a closed space, or
    /// one that holds as many observations as an int can count.
    bool update(bool positive, double value, int weight);

    void setTestVarInd(int index) noexcept { testVarInd_ = index; }
    void setGroup(int groupVar, ROCConst_920::Operation op, double value) noexcept;

    // Summary reads. Not const: the first one closes the space, and the lists are made on demand. The references
    // stay valid as long as the space lives, and show the same lists until SpaceSummary hands those over.

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

    /// Number of negative observations, unweighted. (Spelled so in the interface.)
    [[nodiscard]] int getNegtiveCount() const noexcept { return static_cast<int>(observations_.counts().negatives); }
    [[nodiscard]] int getPositiveCount() const noexcept { return static_cast<int>(observations_.counts().positives); }
    /// Sum of the weights of the negative observations.
    [[nodiscard]] double getNegFreqCount() const noexcept { return negFreqCount_; }
    [[nodiscard]] double getPosFreqCount() const noexcept { return posFreqCount_; }
    [[nodiscard]] int getTestVar() const noexcept { return testVarInd_; }
    [[nodiscard]] int getGroupVar() const noexcept { return groupVar_; }
    [[nodiscard]] ROCConst_920::Operation getGroupOp() const noexcept { return groupOp_; }
    [[nodiscard]] double getGroupValue() const noexcept { return groupValue_; }

private:
    friend class SpaceSummary;

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
    [[nodiscard]] CurveLists takeCurve();
    template <class Work>
    decltype(auto) withWalk(Work&& work) const;
    [[nodiscard]] std::vector<ROCData> listObservations(Order order) const;
    void setOrder(Order order);

    Observations observations_;
    std::optional<valuesort::SortedValues> sorted_; ///< with a curve
    std::optional<DistinctSummary> distinct_;       ///< made on demand
    std::optional<OrderedTriples> triples_;         ///< once statistics ordered the observations

    std::vector<ROCData> data_;              ///< what getROCData() shows, made on demand in order_
    CurveLists lists_;                       ///< made on demand
    std::vector<ClassifiedPositive> counts_; ///< behind sensitivities and specificities, made with the lists

    int testVarInd_ = -1;
    int groupVar_ = -1;
    ROCConst_920::Operation groupOp_ = ROCConst_920::Equal;
    double groupValue_;
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
    constexpr std::size_t mostObservations = std::numeric_limits<int>::max();
    if (weight < 1 || finished_ || std::isnan(value) || observations_.size() == mostObservations)
        return false;
    if (!data_.empty()) // whoever holds the list sees the new case
        data_.push_back({positive, value});
    observations_.add(positive, value);
    (positive ? posFreqCount_ : negFreqCount_) += weight;
    return true;
}

template <class Work>
decltype(auto) ROCSpace::withWalk(Work&& work) const
{
    return sorted_ ? ROCALG_920::withWalk(observations_, *sorted_, work) : ROCALG_920::withWalk(observations_, work);
}

} // namespace ROCALG_920
