#include "inference/OrderedTriples.h"

#include "numeric/Int256.h"

#include <cmath>

namespace ROCALG_920 {

namespace {

/// The two excess moments of the area: what the variance adds for every further case of a state.
struct Moments {
    double q1Excess; ///< Q1 - A^2, two positives against one negative
    double q2Excess; ///< Q2 - A^2, one positive against two negatives
};

/// Q1 = S1 / (nNeg nPos^2) and Q2 = S2 / (nNeg^2 nPos), their excess over A^2 formed before anything is rounded.
Moments nonparametricMoments(const OrderedTriples& sample)
{
    const double pairs = static_cast<double>(sample.cases.positives) * static_cast<double>(sample.cases.negatives);
    const Int256 twiceS = sample.pairs.twiceOrdered;
    const Int256 threeSquares = Int256(3) * twiceS * twiceS;
    const auto excess = [&](Int128 threeTimesSum, std::int64_t count) {
        const Int256 moment = Int256(4) * Int256(count) * Int256(threeTimesSum);
        return static_cast<double>(moment - threeSquares) / (12.0 * pairs * pairs);
    };
    return {excess(sample.threeTimesS1, sample.cases.negatives), excess(sample.threeTimesS2, sample.cases.positives)};
}

/// Q1 = A / (2 - A) and Q2 = 2 A^2 / (1 + A), their excess over A^2 as products of A and its rest 1 - A.
Moments biNegativeExponentialMoments(double area, double rest)
{
    return {area * (rest * rest) / (2 - area), area * area * rest / (1 + area)};
}

} // namespace

double stdErrorOfArea(const OrderedTriples& sample, ROCConst_920::Distribution distribution)
{
    const auto [nPos, nNeg] = sample.cases;
    const double share = sample.pairs.share();
    const double rest = sample.pairs.restShare();
    const auto [q1Excess, q2Excess] = distribution == ROCConst_920::NonParametric
        ? nonparametricMoments(sample)
        : biNegativeExponentialMoments(share, rest);
    const double ofPositives = q1Excess * static_cast<double>(nPos - 1) + rest * share;
    return std::sqrt((q2Excess * static_cast<double>(nNeg - 1) + ofPositives)
                     / static_cast<double>(Int128{nNeg} * nPos));
}

} // namespace ROCALG_920
