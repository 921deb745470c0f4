#include "inference/CutOffCriterion.h"

#include "inference/OperatingStatistics.h"
#include "inference/PartialArea.h"
#include "numeric/Int256.h"

#include <cmath>
#include <limits>

namespace ROCALG_920 {

namespace {

Int256 squared(Int128 x) { return Int256(x) * Int256(x); }

/// FN^2 N^2 + FP^2 P^2
Int256 squaredDistance(const CutOffCounts& c)
{
    return squared(Int128{c.falseNegatives} * c.negatives()) + squared(Int128{c.falsePositives} * c.positives());
}

Int128 imbalance(const CutOffCounts& c)
{
    const Int128 difference = Int128{c.truePositives} * c.negatives() - Int128{c.trueNegatives} * c.positives();
    return difference < 0 ? -difference : difference;
}

/// (TP + FP)(TN + FN)
Int128 calls(const CutOffCounts& c) { return Int128{c.classifiedPositive()} * (c.trueNegatives + c.falseNegatives); }

int signOf(Int128 x) { return (x > 0) - (x < 0); }

std::strong_ordering compareCorrelations(const CutOffCounts& a, const CutOffCounts& b)
{
    const Int128 x = youdenTimesPairs(a);
    const Int128 y = youdenTimesPairs(b);
    if (signOf(x) != signOf(y))
        return signOf(x) <=> signOf(y);
    const Int256 left = squared(x) * Int256(calls(b));
    const Int256 right = squared(y) * Int256(calls(a));
    return x < 0 ? right <=> left : left <=> right;
}

/// Bits of a number above 0.
int bitsOf(Int128 x)
{
    int bits = 0;
    for (; x > 0; x >>= 1)
        ++bits;
    return bits;
}

Int256 timesPowerOfTwo(Int256 x, int exponent)
{
    for (; exponent > 0; --exponent)
        x = x + x;
    return x;
}

/// a <=> h b for a, b > 0 and the exact value of h > 0.
std::strong_ordering compareWithProduct(Int128 a, double h, Int128 b)
{
    constexpr int digits = std::numeric_limits<double>::digits;
    int exponent = 0;
    const auto mantissa = static_cast<std::int64_t>(std::ldexp(std::frexp(h, &exponent), digits));
    exponent -= digits; // h = mantissa 2^exponent
    const int excess = bitsOf(a) - (bitsOf(b) + digits + exponent);
    constexpr int clear = 2; // bits by which lengths of products may mislead
    if (excess > clear || excess < -clear)
        return excess <=> 0;
    const Int256 product = Int256(Int128{mantissa}) * Int256(b);
    return exponent >= 0 ? Int256(a) <=> timesPowerOfTwo(product, exponent)
                         : timesPowerOfTwo(Int256(a), -exponent) <=> product;
}

std::strong_ordering reversed(std::strong_ordering order)
{
    return order > 0 ? std::strong_ordering::less : order < 0 ? std::strong_ordering::greater : order;
}

/// gained - h paid <=> 0
std::strong_ordering compareGain(Int128 gained, double h, Int128 paid)
{
    if (gained > 0 && paid > 0)
        return compareWithProduct(gained, h, paid);
    if (gained < 0 && paid < 0)
        return reversed(compareWithProduct(-gained, h, -paid));
    return signOf(gained) - signOf(paid) <=> 0; // one of them decides
}

} // namespace

CutOffCriterion::CutOffCriterion(Kind kind, const StateCounts& cases, const Options& options)
    : kind_(kind), costRatio_(options.costRatio)
{
    if (options.prevalence)
        weightOfFalse_ = (1.0 - *options.prevalence) / (*options.prevalence * options.costRatio);
    const double positiveShare = kind == Kind::sensitivity ? options.share : options.leastSensitivity;
    const double negativeShare = kind == Kind::specificity ? options.share : options.leastSpecificity;
    leastPositives_ = casesOfShare(positiveShare, cases.positives);
    leastNegatives_ = casesOfShare(negativeShare, cases.negatives);
}

bool CutOffCriterion::admits(const CutOffCounts& c) const
{
    if (kind_ == Kind::mcc)
        return calls(c) > 0;
    return static_cast<double>(c.truePositives) >= leastPositives_
        && static_cast<double>(c.trueNegatives) >= leastNegatives_;
}

std::strong_ordering CutOffCriterion::compare(const CutOffCounts& a, const CutOffCounts& b) const
{
    const auto either = [](std::strong_ordering first, std::strong_ordering second) {
        return first != 0 ? first : second;
    };
    switch (kind_) {
    case Kind::youden: break;
    case Kind::closest: return squaredDistance(b) <=> squaredDistance(a);
    case Kind::accuracy: return a.truePositives - a.falsePositives <=> b.truePositives - b.falsePositives;
    case Kind::cost: return compareCosts(a, b);
    case Kind::f1:
        return Int128{a.truePositives} * (b.classifiedPositive() + b.positives())
            <=> Int128{b.truePositives} * (a.classifiedPositive() + a.positives());
    case Kind::mcc: return compareCorrelations(a, b);
    case Kind::equal: return imbalance(b) <=> imbalance(a);
    case Kind::specificity: return either(a.truePositives <=> b.truePositives, a.trueNegatives <=> b.trueNegatives);
    case Kind::sensitivity: return either(b.falsePositives <=> a.falsePositives, a.truePositives <=> b.truePositives);
    }
    return youdenTimesPairs(a) <=> youdenTimesPairs(b);
}

/// At the sample's prevalence N (TP - FP / r) is largest, with the ratio r as it was given: r = 1 is accuracy.
std::strong_ordering CutOffCriterion::compareCosts(const CutOffCounts& a, const CutOffCounts& b) const
{
    const Int128 gained = a.truePositives - b.truePositives;
    const Int128 paid = a.falsePositives - b.falsePositives;
    if (weightOfFalse_)
        return compareGain(gained * a.negatives(), *weightOfFalse_, paid * a.positives());
    return reversed(compareGain(paid, costRatio_, gained));
}

double CutOffCriterion::value(const CutOffCounts& c) const
{
    const double se = sensitivity(c);
    const double sp = specificity(c);
    const auto valueOf = [&](OperatingStatistic statistic) { return estimateOf(statistic, c); };
    switch (kind_) {
    case Kind::youden: return valueOf(OperatingStatistic::youden);
    case Kind::closest: return std::sqrt((1.0 - se) * (1.0 - se) + (1.0 - sp) * (1.0 - sp));
    case Kind::accuracy: return valueOf(OperatingStatistic::accuracy);
    case Kind::cost: {
        const double h = weightOfFalse_.value_or(static_cast<double>(c.negatives())
                                                 / (static_cast<double>(c.positives()) * costRatio_));
        return se - h * share(c.falsePositives, c.negatives());
    }
    case Kind::f1: return valueOf(OperatingStatistic::f1);
    case Kind::mcc: return valueOf(OperatingStatistic::mcc);
    case Kind::equal: return std::abs(se - sp);
    case Kind::specificity: return se;
    case Kind::sensitivity: break;
    }
    return sp;
}

} // namespace ROCALG_920
