#pragma once

#include "inference/PairedComponents.h"
#include "inference/TestAndInterval.h"
#include "stats/ROCStats.h"

#include <map>
#include <utility>
#include <vector>

namespace ROCALG_920 {

/// Area under the empirical ROC curve with its nonparametric variance, for areas to be compared on the same cases.
///
/// Life: complete when the constructor returns; the maps of components are filled when they are first asked for. The
/// space must outlive the object; its list of observations keeps its order.
/// Trap: getStdError() returns the variance of the area, not its root.
/// Numbers: every sum over the observations is exact, so that the order of the cases does not matter.
/// Failure: without a positive or a negative observation every statistic is the missing value and the maps are empty.
/// With exactly one of a state the variance and what depends on it are not a number.
/// Source: DeLong, DeLong and Clarke-Pearson (1988), Biometrics 44, 837-845.
class ROCPairedStats : public ROCStats {
public:
    /// confidenceLevel in (0, 1). Throws std::bad_alloc only.
    ROCPairedStats(ROCSpace& space, bool largerTestMorePositive, double confidenceLevel);

    [[nodiscard]] int getTestVarInd() const override;
    [[nodiscard]] double getArea() const override { return test_.area; }
    [[nodiscard]] double getGiniIndex() const override { return test_.giniIndex; }
    /// Variance of the area.
    [[nodiscard]] double getStdError() const override { return variance_; }
    [[nodiscard]] double getAsymptoticSignificant() const override { return test_.significance; }
    [[nodiscard]] std::pair<double, double> getConfidenceInterval() const override
    {
        return {test_.lower, test_.upper};
    }
    [[nodiscard]] ROCSpace& getROCSpace() override { return space_; }

    /// For each distinct positive test value, the share of negatives below it, ties counting one half.
    [[nodiscard]] std::map<double, double>& getTxs();
    /// For each distinct negative test value, the share of positives above it, ties counting one half.
    [[nodiscard]] std::map<double, double>& getTys();
    /// The same components by case.
    [[nodiscard]] const PairedComponents& components() const noexcept { return components_; }

private:
    void fillMaps();

    ROCSpace& space_;
    PairedComponents components_;
    double variance_;
    AreaTest test_;
    bool mapsReady_ = false;
    std::map<double, double> txs_;
    std::map<double, double> tys_;
};

/// The comparison kernel: 1 when a > b, 0.5 when a = b, 0 when a < b.
[[nodiscard]] double phi(double a, double b) noexcept;

/// Ascending order of values.
[[nodiscard]] bool valueSort(double a, double b) noexcept;

/// Number of entries of the ascending list xs below y plus one half of those equal to y, scanning from start, before
/// which no entry may equal y; start then moves on by the number of entries equal to y. A start at or past the end of
/// the list is the result itself.
[[nodiscard]] double computeYWk(double y, std::vector<double> xs, int& start);

} // namespace ROCALG_920
