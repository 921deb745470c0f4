#include "inference/Replicates.h"

#include "host/VexDistFun.h"
#include "numeric/tails.h"

#include <limits>

namespace ROCALG_920 {

namespace {

using VexMath_920::VexDistFun;

/// Over a sorted list, so that the order of the replicates changes no bit. Around one of them: equal ones give 0.
double standardDeviation(std::span<const double> sorted)
{
    const auto count = static_cast<double>(sorted.size());
    const double middle = sorted[sorted.size() / 2];
    double sum = 0.0;
    for (const double x : sorted)
        sum += x - middle;
    const double mean = sum / count;
    double squares = 0.0;
    for (const double x : sorted)
        squares += (x - middle - mean) * (x - middle - mean);
    return std::sqrt(squares / (count - 1.0));
}

/// Quantile of the share of replicates below the estimate, those equal to it counting half.
double biasOf(std::span<const double> sorted, double estimate)
{
    constexpr double rounding = 1e-13;
    const double near = rounding * std::abs(estimate);
    const auto first = std::lower_bound(sorted.begin(), sorted.end(), estimate - near);
    const auto last = std::upper_bound(first, sorted.end(), estimate + near);
    const auto below = static_cast<double>(first - sorted.begin());
    const auto equal = static_cast<double>(last - first);
    return VexDistFun::IdfNorm((below + equal / 2.0) / static_cast<double>(sorted.size()), 0.0, 1.0);
}

/// Sums over the cases of one state of the distances of their influences from the mean, each over the cases.
struct CentredSums {
    double squares = 0.0;
    double cubes = 0.0;
    double uncentred = 0.0; ///< squares of the influences themselves
};

template <class CountOf>
CentredSums centredSums(std::span<const DistinctValue> values, std::span<const double> influences, CountOf countOf)
{
    double cases = 0.0;
    double sum = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto count = static_cast<double>(countOf(values[i]));
        cases += count;
        sum += count * influences[i];
    }
    CentredSums sums;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double distance = (influences[i] - sum / cases) / cases;
        const double squares = static_cast<double>(countOf(values[i])) * distance * distance;
        sums.squares += squares;
        sums.cubes += squares * distance;
        sums.uncentred += static_cast<double>(countOf(values[i])) * (influences[i] / cases) * (influences[i] / cases);
    }
    return sums;
}

} // namespace

BootstrapInterval percentilesOf(std::span<double> replicates, double level)
{
    std::ranges::sort(replicates);
    OrderStatistics<double> order(replicates);
    const Limits limits{order.at((1.0 - level) / 2.0), order.at((1.0 + level) / 2.0)};
    return {.stdError = standardDeviation(replicates), .limits = limits, .heldAtEnd = order.heldAtEnd()};
}

BootstrapInterval correctedPercentilesOf(std::span<double> replicates, double estimate, double acceleration,
                                         double level)
{
    BootstrapInterval percentile = percentilesOf(replicates, level);
    const double bias = biasOf(replicates, estimate);
    if (!std::isfinite(bias) || std::isnan(acceleration)) {
        percentile.isPercentile = true;
        return percentile;
    }
    const double z = VexDistFun::IdfNorm((1.0 + level) / 2.0, 0.0, 1.0);
    const auto corrected = [&](double shifted) {
        return normalUpperTail(-(bias + shifted / (1.0 - acceleration * shifted))).probability;
    };
    OrderStatistics<double> order(replicates);
    const Limits limits{order.at(corrected(bias - z)), order.at(corrected(bias + z))};
    return {.stdError = percentile.stdError, .limits = limits, .heldAtEnd = order.heldAtEnd()};
}

double accelerationOf(std::span<const DistinctValue> values, std::span<const double> ofPositive,
                      std::span<const double> ofNegative)
{
    const CentredSums v = centredSums(values, ofPositive, [](const DistinctValue& x) { return x.positives; });
    const CentredSums w = centredSums(values, ofNegative, [](const DistinctValue& x) { return x.negatives; });
    const double squares = v.squares + w.squares;
    constexpr double rounding = 1e-13;
    if (squares <= rounding * rounding * (v.uncentred + w.uncentred)) // no case has any but by rounding
        return std::numeric_limits<double>::quiet_NaN();
    return (v.cubes + w.cubes) / (6.0 * squares * std::sqrt(squares));
}

} // namespace ROCALG_920
