#include "inference/PartialArea.h"

#include "host/VexMV.h"
#include "numeric/Int256.h"
#include "numeric/elementary.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

double square(double x) { return x * x; }

StateCounts seenBy(BandRate rate, const StateCounts& cases)
{
    return rate == BandRate::falsePositive ? cases : StateCounts{cases.negatives, cases.positives};
}

/// A band as numbers of negative cases from the top, c = e N; they need not be whole.
struct Borders {
    double from;
    double to;
};

Borders bordersOf(Band band, BandRate rate, const StateCounts& cases)
{
    if (rate == BandRate::falsePositive)
        return {casesOfShare(band.from, cases.negatives), casesOfShare(band.to, cases.negatives)};
    const auto all = static_cast<double>(cases.positives);
    return {all - casesOfShare(band.to, cases.positives), all - casesOfShare(band.from, cases.positives)};
}

/// What a border makes of a value.
struct AtBorder {
    double ofPositive; ///< G times N
    double share;      ///< w, of its negatives that are in the band
};

AtBorder atBorder(double border, double above, double negatives)
{
    const double rest = border - above; // negatives of the band that are not above
    if (negatives == 0.0)               // exact
        return {std::max(rest, 0.0), rest > 0.0 ? 1.0 : rest < 0.0 ? 0.0 : 0.5};
    const double share = std::clamp(rest / negatives, 0.0, 1.0);
    return {share == 1.0 ? rest - negatives / 2.0 : rest * share / 2.0, share};
}

/// Mean and sum of the squared distances from it.
struct Moments {
    double count = 0.0;
    double mean = 0.0;
    double squares = 0.0;

    void add(const Moments& other)
    {
        if (other.count == 0.0) // exact
            return;
        const double all = count + other.count;
        const double distance = other.mean - mean;
        squares += other.squares + square(distance) * count / all * other.count;
        mean += distance * (other.count / all);
        count = all;
    }
    /// Of the mean, over so many cases of a state.
    [[nodiscard]] double variance() const { return squares / ((count - 1.0) * count); }
};

/// Sums over integers that are the components but for a scale and a shift.
struct IntegerMoments {
    std::int64_t count = 0;
    Int128 sum = 0;
    Int128 squares = 0;

    void add(std::int64_t cases, std::int64_t component)
    {
        count += cases;
        sum += Int128{cases} * component;
        squares += Int128{cases} * component * component;
    }
    /// Of (component + shift) / scale.
    [[nodiscard]] Moments scaled(double shift, double scale) const
    {
        if (count == 0)
            return {};
        const auto cases = static_cast<double>(count);
        const Int256 centred = Int256(Int128{count}) * Int256(squares) - Int256(sum) * Int256(sum);
        return {cases, (static_cast<double>(sum) / cases + shift) / scale,
                static_cast<double>(centred) / cases / square(scale)};
    }
};

/// Moments of the components of both states. Values that a border cuts are few; the components of the others are
/// integers or all the same, so that one pass over them rounds nothing.
class BandSums {
public:
    BandSums(const StateCounts& cases, Borders borders)
        : borders_(borders), twiceTo_(static_cast<std::int64_t>(std::floor(2.0 * borders.to))),
          positives_(static_cast<double>(cases.positives)), negatives_(static_cast<double>(cases.negatives)),
          above_(cases.negatives)
    {
    }

    /// The next value in ascending order.
    void add(const DistinctValue& x)
    {
        above_ -= x.negatives;
        const auto above = static_cast<double>(above_);
        const auto f = static_cast<double>(x.negatives);
        if (isBelow(borders_.to, above, f))
            outside_.add(x);
        else if (isInside(borders_.from, above, f))
            top_.add(x);
        else if (isInside(borders_.to, above, f) && isBelow(borders_.from, above, f))
            addInner(x);
        else
            addCut(x, above, f);
    }
    [[nodiscard]] Moments ofPositive() const
    {
        Moments all{static_cast<double>(outside_.positives), 0.0, 0.0};
        all.add(cutPositives_);
        all.add(innerPositives_.scaled(2.0 * borders_.to - static_cast<double>(twiceTo_), 2.0 * negatives_));
        all.add({static_cast<double>(top_.positives), (borders_.to - borders_.from) / negatives_, 0.0});
        return all;
    }
    /// But for sign and mean, which their variance does not need.
    [[nodiscard]] Moments ofNegative() const
    {
        Moments all{static_cast<double>(outside_.negatives), 0.0, 0.0};
        all.add(cutNegatives_);
        all.add(innerNegatives_.scaled(2.0 * belowInner_, 2.0 * positives_));
        all.add({static_cast<double>(top_.negatives), below() / positives_, 0.0});
        return all;
    }

private:
    /// Are all negatives of a value, or the value itself if it has none, below the border, or above it?
    static bool isBelow(double border, double above, double f)
    {
        return above > border || (above == border && f > 0.0); // exact
    }
    static bool isInside(double border, double above, double f) { return above < border && border - above >= f; }

    void addInner(const DistinctValue& x)
    {
        if (innerPositives_.count == 0 && innerNegatives_.count == 0)
            belowInner_ = cutBelow_;
        innerPositives_.add(x.positives, twiceTo_ - 2 * above_ - x.negatives);
        innerNegatives_.add(x.negatives, 2 * innerPositives_.count - x.positives);
    }
    void addCut(const DistinctValue& x, double above, double f)
    {
        const AtBorder from = atBorder(borders_.from, above, f);
        const AtBorder to = atBorder(borders_.to, above, f);
        const auto p = static_cast<double>(x.positives);
        cutPositives_.add({p, (to.ofPositive - from.ofPositive) / negatives_, 0.0});
        const double own = p * (square(to.share) - square(from.share)) / 2.0;
        cutNegatives_.add({f, (below() + own) / positives_, 0.0});
        cutBelow_ += p * (to.share - from.share);
    }
    /// Sum of p w over the values so far, of the upper border less that of the lower one.
    [[nodiscard]] double below() const { return cutBelow_ + static_cast<double>(innerPositives_.count); }

    Borders borders_;
    std::int64_t twiceTo_; ///< the whole part
    double positives_;
    double negatives_;
    std::int64_t above_; ///< negatives above the value
    StateCounts outside_;
    StateCounts top_;
    IntegerMoments innerPositives_;
    IntegerMoments innerNegatives_;
    double belowInner_ = 0.0; ///< below() at the first value that is wholly inside
    double cutBelow_ = 0.0;
    Moments cutPositives_;
    Moments cutNegatives_;
};

} // namespace

double casesOfShare(double share, std::int64_t all) noexcept
{
    constexpr double roundingUnits = 4.0 * std::numeric_limits<double>::epsilon();
    const double cases = share * static_cast<double>(all);
    const double whole = std::floor(cases + 0.5);
    return std::abs(cases - whole) <= roundingUnits * std::max(1.0, cases) ? whole : cases;
}

PartialArea partialArea(std::span<const DistinctValue> values, const StateCounts& cases, Band band, BandRate rate)
{
    const double width = band.to - band.from;
    const double twiceMean = rate == BandRate::falsePositive ? band.from + band.to : 2.0 - (band.from + band.to);
    PartialArea area{missing, missing, width * twiceMean / 2.0, width};
    if (!cases.bothStates())
        return area;
    BandSums sums(seenBy(rate, cases), bordersOf(band, rate, cases));
    forEachValue(BandWalk(values, rate), [&](const DistinctValue& x) { sums.add(x); });
    const Moments v = sums.ofPositive();
    area.area = v.mean;
    area.variance = v.variance() + sums.ofNegative().variance();
    return area;
}

PartialComponents partialComponents(const Summary& sample, Band band, BandRate rate)
{
    const StateCounts cases = seenBy(rate, sample.counts());
    const Borders borders = bordersOf(band, rate, sample.counts());
    PartialComponents components;
    double above = static_cast<double>(cases.negatives);
    double below = 0.0;
    double sumOfPositive = 0.0;
    double sumOfNegative = 0.0;
    forEachValue(BandWalk(sample.values(), rate), [&](const DistinctValue& x) {
        const auto p = static_cast<double>(x.positives);
        const auto f = static_cast<double>(x.negatives);
        above -= f;
        const AtBorder from = atBorder(borders.from, above, f);
        const AtBorder to = atBorder(borders.to, above, f);
        const double own = p * (square(to.share) - square(from.share)) / 2.0;
        components.ofPositive.push_back((to.ofPositive - from.ofPositive) / static_cast<double>(cases.negatives));
        components.ofNegative.push_back(-(below + own) / static_cast<double>(cases.positives));
        below += p * (to.share - from.share);
        sumOfPositive += p * components.ofPositive.back();
        sumOfNegative += f * components.ofNegative.back();
    });
    const double toMean =
        sumOfPositive / static_cast<double>(cases.positives) - sumOfNegative / static_cast<double>(cases.negatives);
    for (double& component : components.ofNegative)
        component += toMean;
    return components;
}

Limits partialLimits(const PartialArea& area, PartialInterval interval, double zCritical) noexcept
{
    if (std::isnan(area.area) || std::isnan(area.variance) || std::isnan(zCritical))
        return {missing, missing};
    const double error = std::sqrt(area.variance);
    if (interval == PartialInterval::wald)
        return {area.area - zCritical * error, area.area + zCritical * error};
    const double share = area.area / area.width;
    if (share <= 0.0 || share >= 1.0 || error == 0.0) // exact
        return {missing, missing};
    const double half = zCritical * (error / area.width) / (share * (1.0 - share));
    return {area.width * expit(logit(share) - half), area.width * expit(logit(share) + half)};
}

bool isFewInBand(const StateCounts& cases, Band band, BandRate rate) noexcept
{
    constexpr double fewCases = 5.0;
    const std::int64_t all = rate == BandRate::falsePositive ? cases.negatives : cases.positives;
    return casesOfShare(band.to, all) - casesOfShare(band.from, all) < fewCases;
}

} // namespace ROCALG_920
