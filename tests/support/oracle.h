#pragma once

#include "tests/support/Exact.h"
#include "tests/support/Sample.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

/// The definitions, counted cut-off by cut-off and case by case. Sums are exact integers; a statistic is formed from
/// them in long double, with the one rounding that this leaves.
namespace roctest {

__extension__ typedef __int128 Wide;

struct Options {
    bool include;
    bool larger;
};

/// Cut-offs, ascending, and the cases on the positive side of each.
struct CurveTruth {
    int nPos = 0;
    int nNeg = 0;
    std::vector<double> cutOffs;
    std::vector<double> truePositives;
    std::vector<double> falsePositives;
    bool ties = false; ///< some value occurs with both states
};
[[nodiscard]] CurveTruth curveTruth(const Sample& sample, Options options);

/// (cut-off, 1 - specificity, sensitivity) in a row.
[[nodiscard]] Numbers rocRows(const CurveTruth& truth);
/// (maximum, cut-off).
[[nodiscard]] std::pair<double, double> kolmogorovSmirnov(const CurveTruth& truth, bool larger);

/// (cut-off, recall, precision, 1 when interpolated) in a row.
[[nodiscard]] Numbers prRows(const CurveTruth& truth, bool larger, bool alongTP);

/// Per case, twice the number of cases of the other state that it is ordered with, a tie counting one: negatives
/// below a positive, positives above a negative.
struct Placements {
    std::vector<Wide> ofPositives;
    std::vector<Wide> ofNegatives;
    Wide twiceOrdered = 0;

    [[nodiscard]] Wide nPos() const { return static_cast<Wide>(ofPositives.size()); }
    [[nodiscard]] Wide nNeg() const { return static_cast<Wide>(ofNegatives.size()); }
};
[[nodiscard]] Placements placements(std::span<const double> states, std::span<const double> values);

/// Share of ordered pairs, rounded once.
[[nodiscard]] double area(const Placements& placed, bool larger);

/// Sums over ordered triples behind the nonparametric standard error: over the negatives x and all pairs of
/// positives, 3 when both are above x, 1.5 for one above and one equal, 1 for both equal; and the mirror image.
struct TripleSums {
    Wide ofNegatives = 0;
    Wide ofPositives = 0;
};
[[nodiscard]] TripleSums tripleSums(std::span<const double> states, std::span<const double> values);

[[nodiscard]] long double nonparametricStdError(Wide nPos, Wide nNeg, Wide twiceOrdered, const TripleSums& sums);
[[nodiscard]] long double biNegativeStdError(Wide nPos, Wide nNeg, Wide twiceOrdered);
/// Covariance of the areas of two variables on the same cases (variance, when they are the same one).
[[nodiscard]] long double covariance(const Placements& first, const Placements& second);
/// Standard error of the difference of the areas, from the differences case by case.
[[nodiscard]] long double stdErrorOfDifference(const Placements& first, const Placements& second);
/// Two-sided normal tail probability.
[[nodiscard]] long double twoSidedTail(long double z);

inline constexpr long double z95 = 1.959963984540054235524594430520551527955L;

} // namespace roctest
