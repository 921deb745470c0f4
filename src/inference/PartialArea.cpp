#include "inference/PartialArea.h"

#include "host/VexMV.h"
#include "numeric/elementary.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

/// One border of the band: so many negative cases from the top, c = e N.
class Border {
public:
    Border(const StateCounts& cases, double rate)
        : c_(casesOfShare(rate, cases.negatives)), all_(static_cast<double>(cases.negatives)),
          positives_(static_cast<double>(cases.positives)), above_(cases.negatives)
    {
    }

    struct Parts {
        double ofPositive; ///< G
        double ofNegative; ///< H, without the sum over lower values
        double toSum;      ///< what the value adds to that sum for the values above it
    };
    /// The next value in ascending order.
    Parts next(const DistinctValue& x)
    {
        above_ -= x.negatives;
        const auto f = static_cast<double>(x.negatives);
        const auto rest = c_ - static_cast<double>(above_); // negatives of the band that are not above
        const double w = x.negatives > 0 ? std::clamp(rest / f, 0.0, 1.0) : rest > 0.0 ? 1.0 : rest < 0.0 ? 0.0 : 0.5;
        const double g = w == 1.0 ? (rest - f / 2.0) / all_ : w > 0.0 && f > 0.0 ? rest * rest / (2.0 * f * all_) : 0.0;
        const auto p = static_cast<double>(x.positives);
        return {g, p * w * w / 2.0 / positives_, p * w / positives_};
    }

private:
    double c_;
    double all_;
    double positives_;
    std::int64_t above_; ///< negatives above the value
};

double square(double x) { return x * x; }

/// Mean and variance of the mean, two passes over the distinct values.
struct Moments {
    double mean;
    double squares; ///< sum of the squared distances from it
};

template <class CountOf>
Moments momentsOf(const std::vector<double>& components, const Summary& sample, std::int64_t cases, CountOf countOf)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < components.size(); ++i)
        sum += static_cast<double>(countOf(sample.values()[i])) * components[i];
    const double mean = sum / static_cast<double>(cases);
    double squares = 0.0;
    for (std::size_t i = 0; i < components.size(); ++i)
        squares += static_cast<double>(countOf(sample.values()[i])) * square(components[i] - mean);
    return {mean, squares};
}

/// Half the product of what is wide and what is high below the diagonal: its area in the band.
PartialArea withStandard(double area, double variance, Band band, double low)
{
    const double room = (band.to - band.from) - low;
    return {area, variance, (1.0 + (area - low) / room) / 2.0, 1.0 / (2.0 * room)};
}

struct AreaAndVariance {
    double area;
    double variance;
};

AreaAndVariance estimate(const Summary& sample, Band band)
{
    const StateCounts& cases = sample.counts();
    if (!cases.bothStates())
        return {missing, missing};
    const PartialComponents components = partialComponents(sample, band);
    const Moments v =
        momentsOf(components.ofPositive, sample, cases.positives, [](const DistinctValue& x) { return x.positives; });
    const Moments w =
        momentsOf(components.ofNegative, sample, cases.negatives, [](const DistinctValue& x) { return x.negatives; });
    const auto ofMean = [](const Moments& moments, std::int64_t count) {
        const auto n = static_cast<double>(count);
        return moments.squares / ((n - 1.0) * n);
    };
    return {v.mean, ofMean(v, cases.positives) + ofMean(w, cases.negatives)};
}

} // namespace

double casesOfShare(double share, std::int64_t all) noexcept
{
    constexpr double roundingUnits = 4.0 * std::numeric_limits<double>::epsilon();
    const double cases = share * static_cast<double>(all);
    const double whole = std::floor(cases + 0.5);
    return std::abs(cases - whole) <= roundingUnits * std::max(1.0, cases) ? whole : cases;
}

PartialComponents partialComponents(const Summary& sample, Band band)
{
    PartialComponents components;
    Border from(sample.counts(), band.from);
    Border to(sample.counts(), band.to);
    double below = 0.0; // sum of p w / P over lower values, of the upper border less that of the lower one
    double mean = 0.0;
    for (const DistinctValue& x : sample.values()) {
        const Border::Parts low = from.next(x);
        const Border::Parts high = to.next(x);
        components.ofPositive.push_back(high.ofPositive - low.ofPositive);
        components.ofNegative.push_back(-(below + (high.ofNegative - low.ofNegative)));
        below += high.toSum - low.toSum;
        mean += static_cast<double>(x.positives) * components.ofPositive.back();
    }
    mean /= static_cast<double>(sample.counts().positives);
    double ofNegative = 0.0;
    for (std::size_t i = 0; i < components.ofNegative.size(); ++i)
        ofNegative += static_cast<double>(sample.values()[i].negatives) * components.ofNegative[i];
    const double toMean = mean - ofNegative / static_cast<double>(sample.counts().negatives);
    for (double& component : components.ofNegative)
        component += toMean;
    return components;
}

PartialArea partialArea(const Summary& sample, Band band)
{
    const auto [area, variance] = estimate(sample, band);
    return withStandard(area, variance, band, (square(band.to) - square(band.from)) / 2.0);
}

PartialArea partialAreaOfSensitivities(const Summary& sample, Band band)
{
    // States exchanged and values negated, specificity is the rate of what is now called positive.
    const auto [area, variance] = estimate(sample.exchanged(), {1.0 - band.to, 1.0 - band.from});
    return withStandard(area, variance, band, (square(1.0 - band.from) - square(1.0 - band.to)) / 2.0);
}

Limits partialLimits(const PartialArea& area, Band band, PartialInterval interval, double zCritical) noexcept
{
    if (std::isnan(area.area) || std::isnan(area.variance) || std::isnan(zCritical))
        return {missing, missing};
    const double error = std::sqrt(area.variance);
    if (interval == PartialInterval::wald)
        return {area.area - zCritical * error, area.area + zCritical * error};
    const double width = band.to - band.from;
    const double share = area.area / width;
    if (share <= 0.0 || share >= 1.0 || error == 0.0) // exact
        return {missing, missing};
    const double half = zCritical * (error / width) / (share * (1.0 - share));
    return {width * expit(logit(share) - half), width * expit(logit(share) + half)};
}

} // namespace ROCALG_920
