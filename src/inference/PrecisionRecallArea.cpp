#include "inference/PrecisionRecallArea.h"

#include "host/VexMV.h"
#include "numeric/elementary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

/// log(1 + x) for x >= 0, and x less it, without cancellation.
struct Logarithm {
    double value;
    double below;
};

/// log(1 + x) = 2 (u + u^3/3 + u^5/5 + ...) with u = x/(2 + x), of which x = 2 (u + u^2 + u^3 + ...).
template <int terms>
Logarithm seriesOf(double x, double u)
{
    const double q = u * u;
    double sum = 0.0; // 1/3 + q/5 + q^2/7 + ...
    for (int n = terms; n > 0; --n)
        sum = sum * q + 1.0 / (2 * n + 1);
    return {2.0 * u * (1.0 + q * sum), u * (x - 2.0 * q * sum)};
}

Logarithm logarithmAndRest(double x)
{
    constexpr double small = 0.01;
    constexpr double large = 0.3;
    if (x < small)
        return seriesOf<4>(x, x / (2.0 + x));
    if (x < large)
        return seriesOf<10>(x, x / (2.0 + x));
    const DoubleDouble value = logarithmOfOnePlus(x);
    return {static_cast<double>(value), static_cast<double>(x - value)};
}

/// A step of the curve with false positives as they are weighted, in numbers of positive cases.
struct Step {
    double t0, f0; ///< counts before it
    double p, f;   ///< what it adds
    bool isFirst;

    [[nodiscard]] double t1() const { return t0 + p; }
    [[nodiscard]] double d0() const { return t0 + f0; }
    [[nodiscard]] double d1() const { return t1() + (f0 + f); }
    [[nodiscard]] double precision() const { return t1() / d1(); }
    [[nodiscard]] double precisionBefore() const { return isFirst ? precision() : t0 / d0(); }
    /// Without false positives all terms are exact.
    [[nodiscard]] bool isPure() const { return f0 + f == 0.0; }
};

/// The mean precision over the recall that the step adds: T0/s L + D0/s^2 (x - L) for D = T + F,
/// s = (D1 - D0)/(T1 - T0), x = (D1 - D0)/D0, L = log(1 + x)
double integralTerm(const Step& step)
{
    const double wide = step.p + step.f;
    const double s = wide / step.p;
    const auto [value, below] = logarithmAndRest(wide / step.d0());
    return step.t0 / s * value + step.d0() / (s * s) * below;
}

/// What a step that adds positive cases adds to the area times P.
double termOf(const Step& step, PrecisionRecallRule rule)
{
    if (step.isPure())
        return step.p;
    if (rule == PrecisionRecallRule::step || step.isFirst)
        return step.p * step.precision();
    if (rule == PrecisionRecallRule::trapezoid)
        return step.p * (step.precisionBefore() + step.precision()) / 2.0;
    return integralTerm(step);
}

/// Of all the cases of either state, by number or by weight.
double weightOfFalse(double positives, double negatives, std::optional<double> prevalence)
{
    return prevalence ? (1.0 - *prevalence) * positives / (*prevalence * negatives) : 1.0;
}

double weightOfFalse(const StateCounts& cases, std::optional<double> prevalence)
{
    return weightOfFalse(static_cast<double>(cases.positives), static_cast<double>(cases.negatives), prevalence);
}

StateWeights casesOf(const DistinctValue& x)
{
    return {static_cast<double>(x.positives), static_cast<double>(x.negatives)};
}
StateWeights casesOf(const ValueWeights& x) { return {x.positives.sum, x.negatives.sum}; }

/// Calls visit(place, Step) for every distinct value from the strictest cut-off on. Total holds sums of cases.
template <class Total, class Value, class Visit>
void forEachStep(std::span<const Value> values, double weight, Visit&& visit)
{
    Total truePositives = 0.0;
    Total falsePositives = 0.0;
    bool isFirst = true;
    for (std::size_t place = values.size(); place-- > 0;) {
        const auto [p, n] = casesOf(values[place]);
        if (p == 0.0 && n == 0.0) // a value that a replicate did not draw
            continue;
        visit(place,
              Step{static_cast<double>(truePositives), static_cast<double>(falsePositives) * weight, p, n * weight,
                   isFirst});
        truePositives = truePositives + p;
        falsePositives = falsePositives + n;
        isFirst = false;
    }
}

/// Derivatives of the term of a step by what it starts from and by what it adds.
struct Slopes {
    double t0 = 0.0;
    double f0 = 0.0;
    double p = 0.0;
    double f = 0.0;
};

Slopes slopesOfStep(const Step& step)
{
    const double d = step.d1();
    const double byT = step.p * (step.f0 + step.f) / (d * d);
    const double byF = -step.p * step.t1() / (d * d);
    return {byT, byF, step.precision() + byT, byF};
}

Slopes slopesOfTrapezoid(const Step& step)
{
    const double d0 = step.d0();
    const Slopes end = slopesOfStep(step); // twice the part of the precision at the end
    return {(end.t0 + step.p * step.f0 / (d0 * d0)) / 2.0, (end.f0 - step.p * step.t0 / (d0 * d0)) / 2.0,
            (end.p + step.precisionBefore()) / 2.0, end.f / 2.0};
}

/// The term is p times the integral of T/D over v from 0 to 1, with T = T0 + p v and D = D0 + (p + f) v; so are its
/// derivatives, of other fractions. Where D changes little, by Gauss's rule of 8 points, which is right to all digits
/// then; else over stretches where it does.
Slopes slopesOfIntegral(const Step& step)
{
    constexpr std::array<double, 4> nodes{0.1834346424956498, 0.525532409916329, 0.7966664774136267,
                                          0.9602898564975363};
    constexpr std::array<double, 4> weights{0.362683783378362, 0.31370664587788727, 0.22238103445337448,
                                            0.10122853629037626};
    Slopes slopes;
    const double wide = step.p + step.f;
    for (double from = 0.0; from < 1.0;) {
        // Up to twice the D at its start.
        const double to = std::min(1.0, 2.0 * from + step.d0() / wide);
        const double half = (to - from) / 2.0;
        const auto addAt = [&](double v, double weight) {
            const double t = step.t0 + step.p * v;
            const double f = step.f0 + step.f * v;
            const double scale = step.p * weight * half / ((t + f) * (t + f));
            slopes.t0 += scale * f;
            slopes.f0 -= scale * t;
            slopes.p += scale * ((t + f) * t / step.p + v * f);
            slopes.f -= scale * v * t;
        };
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            addAt(from + half * (1.0 - nodes[i]), weights[i]);
            addAt(from + half * (1.0 + nodes[i]), weights[i]);
        }
        from = to;
    }
    return slopes;
}

Slopes slopesOf(const Step& step, PrecisionRecallRule rule)
{
    if (step.p == 0.0) // its term is 0, whatever it starts from
        return {};
    if (rule == PrecisionRecallRule::step || step.isFirst)
        return slopesOfStep(step);
    return rule == PrecisionRecallRule::trapezoid ? slopesOfTrapezoid(step) : slopesOfIntegral(step);
}

/// Sum of i / (i + n) for i from 1 to p: the first terms one by one, the others by their integral with the corrections
/// of Euler and Maclaurin.
double sumOfLowestPrecisions(double p, double n)
{
    constexpr double oneByOne = 1000.0;
    const double m = std::min(p, oneByOne);
    double sum = 0.0;
    for (double i = 1.0; i <= m; i += 1.0)
        sum += i / (i + n);
    if (p == m)
        return sum;
    const auto slope = [n](double i) { return n / ((i + n) * (i + n)); };
    const auto thirdSlope = [n](double i) { return 6.0 * n / ((i + n) * (i + n) * (i + n) * (i + n)); };
    const double ends = (p / (p + n) - m / (m + n)) / 2.0;
    return sum + integralTerm({m, n, p - m, 0.0, false}) + ends + (slope(p) - slope(m)) / 12.0
        - (thirdSlope(p) - thirdSlope(m)) / 720.0;
}

} // namespace

double precisionRecallArea(std::span<const DistinctValue> values, const StateCounts& cases, PrecisionRecallRule rule,
                           std::optional<double> prevalence)
{
    if (!cases.bothStates())
        return missing;
    double sum = 0.0;
    forEachStep<double>(values, weightOfFalse(cases, prevalence), [&](std::size_t, const Step& step) {
        if (step.p > 0.0)
            sum += termOf(step, rule);
    });
    return sum / static_cast<double>(cases.positives);
}

double precisionRecallArea(const WeightedSummary& sample, PrecisionRecallRule rule, std::optional<double> prevalence)
{
    const StateCounts& cases = sample.counts.counts();
    if (!cases.bothStates())
        return missing;
    const auto [positives, negatives] = sample.totals();
    double sum = 0.0;
    const double weight = weightOfFalse(positives, negatives, prevalence);
    forEachStep<DoubleDouble>(std::span(sample.weights), weight, [&](std::size_t, const Step& step) {
        if (step.p > 0.0)
            sum += termOf(step, rule);
    });
    return sum / positives;
}

CaseInfluence precisionRecallInfluence(std::span<const DistinctValue> values, const StateCounts& cases,
                                       PrecisionRecallRule rule, std::optional<double> prevalence)
{
    const double weight = weightOfFalse(cases, prevalence);
    std::vector<Slopes> slopes(values.size());
    forEachStep<double>(values, weight,
                        [&](std::size_t place, const Step& step) { slopes[place] = slopesOf(step, rule); });
    CaseInfluence influence;
    const double ofNegatives = weight * static_cast<double>(cases.negatives) / static_cast<double>(cases.positives);
    double laterByT = 0.0;
    double laterByF = 0.0;
    for (const Slopes& own : slopes) {
        influence.ofPositive.push_back(own.p + laterByT);
        influence.ofNegative.push_back((own.f + laterByF) * ofNegatives);
        laterByT += own.t0;
        laterByF += own.f0;
    }
    return influence;
}

Limits precisionRecallLimits(double area, std::int64_t positives, PrecisionRecallInterval interval,
                             double zCritical) noexcept
{
    if (std::isnan(area) || std::isnan(zCritical))
        return {missing, missing};
    const auto n = static_cast<double>(positives);
    if (interval == PrecisionRecallInterval::binomial) {
        const double half = zCritical * std::sqrt(area * (1.0 - area) / n);
        return {area - half, area + half};
    }
    if (area == 0.0 || area >= 1.0) // exact
        return {missing, missing};
    const double half = zCritical / std::sqrt(n * area * (1.0 - area));
    return {expit(logit(area) - half), expit(logit(area) + half)};
}

double lowestPrecisionRecallArea(const StateCounts& cases, PrecisionRecallRule rule)
{
    if (!cases.bothStates() || rule == PrecisionRecallRule::trapezoid)
        return missing;
    const auto p = static_cast<double>(cases.positives);
    const auto n = static_cast<double>(cases.negatives);
    if (rule == PrecisionRecallRule::integral) { // 1 + (1 - g)/g log(1 - g), g = P/(P + N)
        const double x = p / n;                  // log(1 - g) = -log(1 + x)
        return logarithmAndRest(x).below / x;
    }
    return sumOfLowestPrecisions(p, n) / p;
}

} // namespace ROCALG_920
