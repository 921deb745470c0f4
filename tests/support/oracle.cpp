#include "tests/support/oracle.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace roctest {
namespace {

/// The values of one state, for counting.
class Counted {
public:
    Counted(std::span<const double> states, std::span<const double> values, bool positive)
    {
        for (std::size_t i = 0; i < states.size(); ++i)
            if ((states[i] == 1.0) == positive)
                sorted_.push_back(values[i]);
        std::ranges::sort(sorted_);
    }
    [[nodiscard]] std::int64_t below(double v) const { return std::ranges::lower_bound(sorted_, v) - sorted_.begin(); }
    [[nodiscard]] std::int64_t upTo(double v) const { return std::ranges::upper_bound(sorted_, v) - sorted_.begin(); }
    [[nodiscard]] std::int64_t equal(double v) const { return upTo(v) - below(v); }
    [[nodiscard]] std::int64_t above(double v) const { return count() - upTo(v); }
    [[nodiscard]] std::int64_t count() const { return static_cast<std::int64_t>(sorted_.size()); }

private:
    std::vector<double> sorted_;
};

std::vector<double> cutOffsOf(std::vector<double> values)
{
    std::ranges::sort(values);
    values.erase(std::unique(values.begin(), values.end()), values.end());
    const bool insideUnit = values.front() > 0.0 && values.back() < 1.0;
    std::vector<double> cutOffs{insideUnit ? 0.0 : values.front() - 1.0};
    for (std::size_t i = 1; i < values.size(); ++i)
        cutOffs.push_back((values[i - 1] + values[i]) * 0.5);
    cutOffs.push_back(insideUnit ? 1.0 : values.back() + 1.0);
    return cutOffs;
}

long double asLong(Wide value)
{
    // The compiler adds up both halves of the number: with opposite signs they would cancel under valgrind, which
    // rounds a long double to a double.
    return value < 0 ? -static_cast<long double>(-value) : static_cast<long double>(value);
}

double precision(double tp, double fp) { return tp / (tp + fp); }

/// Sum of products over the cases of one state around the means of both, times the number of cases.
Wide centred(const std::vector<Wide>& a, const std::vector<Wide>& b)
{
    Wide products = 0;
    Wide sumA = 0;
    Wide sumB = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        products += a[i] * b[i];
        sumA += a[i];
        sumB += b[i];
    }
    return static_cast<Wide>(a.size()) * products - sumA * sumB;
}

std::vector<Wide> difference(const std::vector<Wide>& a, const std::vector<Wide>& b)
{
    std::vector<Wide> result(a.size());
    std::ranges::transform(a, b, result.begin(), std::minus<>{});
    return result;
}

/// One state's part of a covariance of areas: `count` cases placed among `others`.
long double part(Wide centredSum, Wide count, Wide others)
{
    return asLong(centredSum) / asLong(4 * others * others * count * count) / asLong(count - 1);
}

} // namespace

CurveTruth curveTruth(const Sample& sample, Options options)
{
    const Counted positives(sample.states, sample.values, true);
    const Counted negatives(sample.states, sample.values, false);
    CurveTruth truth{.nPos = static_cast<int>(positives.count()),
                     .nNeg = static_cast<int>(negatives.count()),
                     .cutOffs = cutOffsOf(sample.values),
                     .truePositives = {},
                     .falsePositives = {}};
    truth.ties =
        std::ranges::any_of(sample.values, [&](double v) { return positives.equal(v) > 0 && negatives.equal(v) > 0; });
    // Whether the values equal to the cut-off are left of it, with the smaller ones.
    const bool equalIsLeft = options.larger ? !options.include : options.include;
    std::int64_t leftPos = 0;
    std::int64_t leftNeg = 0;
    for (const double c : truth.cutOffs) { // NaN has nothing on its left; counts never fall
        const auto left = [&](const Counted& state) {
            return std::isnan(c) ? 0 : equalIsLeft ? state.upTo(c) : state.below(c);
        };
        leftPos = std::max(leftPos, left(positives));
        leftNeg = std::max(leftNeg, left(negatives));
        truth.truePositives.push_back(static_cast<double>(options.larger ? positives.count() - leftPos : leftPos));
        truth.falsePositives.push_back(static_cast<double>(options.larger ? negatives.count() - leftNeg : leftNeg));
    }
    return truth;
}

Numbers rocRows(const CurveTruth& truth)
{
    Numbers rows;
    for (std::size_t i = 0; i < truth.cutOffs.size(); ++i) {
        const double specificity = (truth.nNeg - truth.falsePositives[i]) / truth.nNeg;
        rows.insert(rows.end(), {{truth.cutOffs[i]}, {1.0 - specificity}, {truth.truePositives[i] / truth.nPos}});
    }
    return rows;
}

std::pair<double, double> kolmogorovSmirnov(const CurveTruth& truth, bool larger)
{
    std::pair<double, double> best{-1.0, 0.0};
    for (std::size_t i = 0; i < truth.cutOffs.size(); ++i) {
        const double specificity = (truth.nNeg - truth.falsePositives[i]) / truth.nNeg;
        const double j = truth.truePositives[i] / truth.nPos - (1.0 - specificity);
        if (j - best.first > 1e-14)
            best = {j, truth.cutOffs[i]};
        else if (larger && std::abs(j - best.first) <= 1e-14)
            best.second = truth.cutOffs[i];
    }
    return best;
}

Numbers prRows(const CurveTruth& truth, bool larger, bool alongTP)
{
    Numbers rows;
    std::vector<std::size_t> measured; // positions of the precisions of measured points
    std::size_t undefined = 0;         // position of the last one of them without a positive case
    for (std::size_t i = 0; i < truth.cutOffs.size(); ++i) {
        const double tp = truth.truePositives[i];
        const double fp = truth.falsePositives[i];
        const auto point = [&](double t, double quotient, double interpolated) {
            rows.insert(rows.end(), {{truth.cutOffs[i]}, {t / truth.nPos}, {quotient}, {interpolated}});
        };
        const double beforeTp = i > 0 ? truth.truePositives[i - 1] : tp;
        const double beforeFp = i > 0 ? truth.falsePositives[i - 1] : fp;
        if (std::abs(beforeTp - tp) >= 2 && precision(tp, fp) != precision(beforeTp, beforeFp)) {
            const auto [lowTp, highTp] = std::minmax({tp, beforeTp});
            const auto [lowFp, highFp] = std::minmax({fp, beforeFp});
            const int steps = static_cast<int>(alongTP ? highTp - lowTp : highFp - lowFp) - 1;
            for (int n = 1; n <= steps; ++n) {
                const int k = tp > beforeTp ? n : steps + 1 - n; // toward the current point
                if (alongTP) {
                    const double t = lowTp + k;
                    point(t, t / (k * ((highFp - lowFp) / (highTp - lowTp)) + (lowFp + t)), 1.0);
                } else {
                    const double t = lowTp + k * ((highTp - lowTp) / (highFp - lowFp));
                    point(t, t / (t + (lowFp + k)), 1.0);
                }
            }
        }
        measured.push_back(rows.size() + 2);
        if (tp + fp == 0.0)
            undefined = measured.back();
        point(tp, precision(tp, fp), 0.0);
    }
    if (larger && undefined == measured.back())
        rows[undefined] = rows[measured[measured.size() - 2]];
    if (!larger && undefined == measured.front())
        rows[undefined] = rows[measured[1]];
    return rows;
}

Placements placements(std::span<const double> states, std::span<const double> values)
{
    const Counted positives(states, values, true);
    const Counted negatives(states, values, false);
    Placements result;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states[i] == 1.0) {
            result.ofPositives.push_back(2 * negatives.below(values[i]) + negatives.equal(values[i]));
            result.twiceOrdered += result.ofPositives.back();
        } else {
            result.ofNegatives.push_back(2 * positives.above(values[i]) + positives.equal(values[i]));
        }
    }
    return result;
}

double area(const Placements& placed, bool larger)
{
    const Wide twicePairs = 2 * placed.nPos() * placed.nNeg();
    const Wide twiceOrdered = larger ? placed.twiceOrdered : twicePairs - placed.twiceOrdered;
    return static_cast<double>(twiceOrdered) / static_cast<double>(twicePairs);
}

TripleSums tripleSums(std::span<const double> states, std::span<const double> values)
{
    const Counted positives(states, values, true);
    const Counted negatives(states, values, false);
    const auto thrice = [](Wide outside, Wide equal) {
        return 3 * outside * outside + 3 * outside * equal + equal * equal;
    };
    TripleSums sums;
    for (std::size_t i = 0; i < states.size(); ++i)
        if (states[i] == 1.0)
            sums.ofPositives += thrice(negatives.below(values[i]), negatives.equal(values[i]));
        else
            sums.ofNegatives += thrice(positives.above(values[i]), positives.equal(values[i]));
    return sums;
}

long double nonparametricStdError(Wide nPos, Wide nNeg, Wide twiceOrdered, const TripleSums& sums)
{
    const Wide square = 3 * twiceOrdered * twiceOrdered;
    const Wide numerator = (4 * nNeg * sums.ofNegatives - square) * (nPos - 1)
        + (4 * nPos * sums.ofPositives - square) * (nNeg - 1) + 3 * twiceOrdered * (2 * nPos * nNeg - twiceOrdered);
    const long double pairs = asLong(nPos * nNeg);
    return std::sqrt(asLong(numerator) / (12 * pairs * pairs * pairs));
}

long double biNegativeStdError(Wide nPos, Wide nNeg, Wide twiceOrdered)
{
    const Wide twicePairs = 2 * nPos * nNeg;
    const long double a = asLong(twiceOrdered) / asLong(twicePairs);
    const long double rest = asLong(twicePairs - twiceOrdered) / asLong(twicePairs);
    const long double variance =
        asLong(nPos - 1) * a * rest * rest / (2 - a) + asLong(nNeg - 1) * a * a * rest / (1 + a) + a * rest;
    return std::sqrt(variance / asLong(nPos * nNeg));
}

long double covariance(const Placements& first, const Placements& second)
{
    return part(centred(first.ofPositives, second.ofPositives), first.nPos(), first.nNeg())
        + part(centred(first.ofNegatives, second.ofNegatives), first.nNeg(), first.nPos());
}

long double stdErrorOfDifference(const Placements& first, const Placements& second)
{
    const Placements d{difference(first.ofPositives, second.ofPositives),
                       difference(first.ofNegatives, second.ofNegatives), 0};
    return std::sqrt(covariance(d, d));
}

long double twoSidedTail(long double z) { return std::erfc(std::abs(z) / std::sqrt(2.0L)); }

} // namespace roctest
