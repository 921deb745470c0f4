#include "numeric/tails.h"

#include "numeric/elementary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace ROCALG_920 {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// phi(z) Sum z^(2k+1) / (1 3 ... (2k+1)): what lies between 0 and z.
DoubleDouble normalFromMiddle(DoubleDouble z, DoubleDouble square)
{
    DoubleDouble term = z;
    DoubleDouble sum = term;
    for (int odd = 3; std::abs(term.high()) > std::abs(sum.high()) * 1e-34; odd += 2) {
        term = term * square / double(odd);
        sum = sum + term;
    }
    return sum * exponential(-square * 0.5 - halfLogTwoPi);
}

/// Upper tail over density, by Laplace's continued fraction from its 120th term.
double millsRatio(double z)
{
    constexpr int terms = 120;
    double below = z;
    for (int n = terms; n > 0; --n)
        below = z + n / below;
    return 1.0 / below;
}

/// Upper tail at z, whose square is given, for the last digits depend on it.
Tail normalTail(DoubleDouble z, DoubleDouble square)
{
    constexpr double far = 6.0;
    if (z.high() < far) {
        const DoubleDouble tail = z.high() < -40.0 ? 1.0 : 0.5 - normalFromMiddle(z, square);
        return {static_cast<double>(tail), static_cast<double>(logarithm(tail))};
    }
    const DoubleDouble logDensity = -square * 0.5 - halfLogTwoPi;
    const double ratio = millsRatio(z.high());
    return {static_cast<double>(exponential(logDensity) * ratio), static_cast<double>(logDensity + logarithm(ratio))};
}

/// The coefficients B(2k) / (2k (2k - 1)) of Stirling's series.
constexpr std::array<DoubleDouble, 13> stirling{{{0.08333333333333333, 4.625929269271485e-18},
                                                 {-0.002777777777777778, 1.0601087908747154e-19},
                                                 {0.0007936507936507937, 6.883823317368282e-22},
                                                 {-0.0005952380952380953, 5.36938218754726e-20},
                                                 {0.0008417508417508417, 3.6870174889237694e-20},
                                                 {-0.0019175269175269176, 1.0675702776872475e-19},
                                                 {0.00641025641025641, 2.2240044563805217e-19},
                                                 {-0.029550653594771242, 4.861760957508855e-19},
                                                 {0.17964437236883057, -6.401600482710946e-19},
                                                 {-1.3924322169059011, 1.5837056989230303e-17},
                                                 {13.402864044168393, -6.154114101993966e-16},
                                                 {-156.84828462600203, 9.391823141715389e-15},
                                                 {2193.1033333333335, -1.3339255626002948e-13}}};

DoubleDouble logBeta(double a, double b) { return logGamma(a) + logGamma(b) - logGamma(DoubleDouble::sum(a, b)); }

// In double, where no more is needed: fixed operations, some units in the last place.

/// e^x for x from -700 to 1.
double roughExponential(double x)
{
    constexpr double logTwoHigh = 0x1.62e42fee00000p-1; // its products with small integers are exact
    constexpr double logTwoLow = 0x1.a39ef35793c76p-33;
    constexpr int terms = 14;
    const double twos = std::floor(x * std::numbers::log2e + 0.5);
    const double rest = (x - twos * logTwoHigh) - twos * logTwoLow;
    double sum = 1.0;
    for (int n = terms; n > 0; --n)
        sum = 1.0 + sum * rest / n;
    return std::ldexp(sum, static_cast<int>(twos));
}

/// log(1 + w) - w for w from 0 to 1/2.
double smallLogarithmBelowLine(double w)
{
    constexpr int terms = 16;
    const double z = w / (2.0 + w);
    double sum = 0.0;
    for (int n = terms; n > 0; --n)
        sum = (sum + 1.0 / (2 * n + 1)) * (z * z);
    return z * (2.0 * sum - w);
}

/// log(1 + w) - w for w >= 0.
double logarithmBelowLine(double w)
{
    constexpr double small = 0.5;
    if (w <= small)
        return smallLogarithmBelowLine(w);
    int twos = 0;
    double mantissa = 2.0 * std::frexp(1.0 + w, &twos); // 1 to 2
    --twos;
    if (mantissa > 1.0 + small) {
        mantissa *= 0.5;
        ++twos;
    }
    const double excess = mantissa - 1.0;
    const double fraction = excess >= 0.0 ? smallLogarithmBelowLine(excess) + excess
                                          : -(smallLogarithmBelowLine(-excess / mantissa) - excess / mantissa);
    return (twos * std::numbers::ln2 + fraction) - w;
}

/// e^-u - 1 + u for u >= 0.
double exponentialBeyondLine(double u)
{
    constexpr int terms = 20;
    if (u >= 1.0)
        return roughExponential(-std::min(u, 700.0)) - 1.0 + u;
    double sum = 0.0;
    for (int n = terms; n > 2; --n)
        sum = (1.0 + sum) * -u / n;
    return (1.0 + sum) * u * u / 2.0;
}

struct Node {
    double place;
    double weight;
};
/// Half of Gauss and Legendre's 32 nodes in [-1, 1].
constexpr std::array gauss{
    Node{0.04830766568773832, 0.0965400885147278},  Node{0.1444719615827965, 0.09563872007927486},
    Node{0.23928736225213706, 0.09384439908080457}, Node{0.33186860228212767, 0.09117387869576389},
    Node{0.42135127613063533, 0.08765209300440381}, Node{0.5068999089322294, 0.08331192422694675},
    Node{0.5877157572407623, 0.07819389578707031},  Node{0.6630442669302152, 0.0723457941088485},
    Node{0.7321821187402897, 0.06582222277636185},  Node{0.7944837959679424, 0.058684093478535544},
    Node{0.84936761373257, 0.050998059262376175},   Node{0.8963211557660521, 0.04283589802222668},
    Node{0.9349060759377397, 0.03427386291302143},  Node{0.9647622555875064, 0.02539206530926206},
    Node{0.9856115115452684, 0.01627439473090567},  Node{0.9972638618494816, 0.007018610009470096}};

/// With t = x e^-u the lower tail of Beta(a, b) is x^a y^(b-1) / B(a, b) times the integral of e^h(u) from 0, where
///
///     h(u) = -a u + (b - 1) log(1 + w),   w = r (1 - e^-u),   r = x / y
///
/// falls from 0 when x is below the mode. It is formed of terms of one sign, so that nothing cancels:
///
///     h(u) = -(a - (b - 1) r) u + (b - 1) ((log(1 + w) - w) - r (e^-u - 1 + u))
class BetaIntegrand {
public:
    BetaIntegrand(double a, double b, DoubleDouble x, DoubleDouble y)
        : ratio_(static_cast<double>(x / y)), less_(b - 1.0),
          slope_(static_cast<double>(a - (DoubleDouble::sum(b, -1.0)) * (x / y)))
    {
    }

    [[nodiscard]] double integral() const
    {
        const double end = whereNothingIsLeft();
        double sum = 0.0;
        double begin = 0.0;
        for (const double share : {1.0 / 64, 1.0 / 8, 1.0}) {
            sum += between(begin, share * end);
            begin = share * end;
        }
        return sum;
    }

private:
    [[nodiscard]] double exponent(double u) const
    {
        const double beyond = exponentialBeyondLine(u);
        const double w = ratio_ * (u - beyond);
        return -slope_ * u + less_ * (logarithmBelowLine(w) - ratio_ * beyond);
    }

    /// Where the integrand is about e^-42.
    [[nodiscard]] double whereNothingIsLeft() const
    {
        constexpr double least = -42.0;
        double u = 1e-300;
        while (exponent(u) > least)
            u *= 65536.0;
        double low = u / 65536.0;
        for (int i = 0; i < 24; ++i) {
            const double middle = std::sqrt(low) * std::sqrt(u);
            (exponent(middle) > least ? low : u) = middle;
        }
        return u;
    }

    [[nodiscard]] double between(double begin, double end) const
    {
        const double middle = 0.5 * (begin + end);
        const double half = 0.5 * (end - begin);
        const auto value = [&](double u) { return roughExponential(exponent(u)); };
        double sum = 0.0;
        for (const auto& [place, weight] : gauss)
            sum += weight * (value(middle - half * place) + value(middle + half * place));
        return sum * half;
    }

    double ratio_;
    double less_;
    double slope_;
};

struct LogTails {
    Tail lower;
    Tail upper;
};

class BetaDistribution {
public:
    BetaDistribution(double a, double b) : a_(a), b_(b), logBeta_(logBeta(a, b)) {}

    /// Both tails at x = 1 - y, each of which has its own digits.
    [[nodiscard]] LogTails tailsAt(DoubleDouble x, DoubleDouble y) const
    {
        if (y * a_ < x * b_) { // above the mean
            const Tail upper = belowMean(b_, a_, y, x);
            return {restOf(upper), upper};
        }
        const Tail lower = belowMean(a_, b_, x, y);
        return {lower, restOf(lower)};
    }
    /// log of x y times the density: the derivative of the lower tail over the logarithm of x / y.
    [[nodiscard]] DoubleDouble logSlope(DoubleDouble x, DoubleDouble y) const
    {
        return logarithm(x) * a_ + logarithm(y) * b_ - logBeta_;
    }
    /// x / y near the place where the smaller tail of one side is p: as if its logarithm were normal.
    [[nodiscard]] double approximateOdds(double p, bool ofUpper) const
    {
        const double z = approximateNormalQuantile(p) * std::sqrt(1.0 / a_ + 1.0 / b_);
        return a_ / b_ * exponential(ofUpper ? z : -z).high();
    }

private:
    /// The lower tail of Beta(a, b) where x is below the mean.
    [[nodiscard]] Tail belowMean(double a, double b, DoubleDouble x, DoubleDouble y) const
    {
        const DoubleDouble logFactor = logarithm(x) * a + logarithm(y) * DoubleDouble::sum(b, -1.0) - logBeta_;
        const DoubleDouble value = logFactor + logarithm(BetaIntegrand(a, b, x, y).integral());
        return {static_cast<double>(exponential(value)), static_cast<double>(value)};
    }
    static Tail restOf(const Tail& tail)
    {
        return {1.0 - tail.probability, static_cast<double>(logarithmOfOnePlus(-tail.probability))};
    }
    /// Hastings' formula: z above which p <= 1/2 lies, to three digits.
    static double approximateNormalQuantile(double p)
    {
        const double t = std::sqrt(-2.0 * logarithm(p).high());
        return t - (2.515517 + t * (0.802853 + t * 0.010328)) / (1.0 + t * (1.432788 + t * (0.189269 + t * 0.001308)));
    }

    double a_;
    double b_;
    DoubleDouble logBeta_;
};

/// x / (1 - x) where the lower tail of Beta(a, b) is p, or the upper one: Newton's steps for the logarithm of the tail
/// over that of the ratio, held between bounds that close in.
double oddsOfQuantile(double p, double a, double b, bool ofUpper)
{
    constexpr int mostSteps = 200;
    constexpr double least = 1e-300;
    constexpr double epsilon = std::numeric_limits<double>::epsilon();
    if (p > 0.5)
        return oddsOfQuantile(1.0 - p, a, b, !ofUpper); // exact
    const BetaDistribution distribution(a, b);
    const double wanted = static_cast<double>(logarithm(p));
    const double nearest = epsilon * std::max(1.0, -wanted);
    double low = least; // odds below and above which the quantile does not lie
    double high = 1.0 / least;
    double odds = std::clamp(distribution.approximateOdds(p, ofUpper), 2.0 * low, high / 2.0);
    for (int step = 0; step < mostSteps; ++step) {
        const DoubleDouble y = 1.0 / (1.0 + DoubleDouble(odds));
        const DoubleDouble x = y * odds;
        const LogTails tails = distribution.tailsAt(x, y);
        const Tail& tail = ofUpper ? tails.upper : tails.lower;
        const double excess = (tail.logarithm - wanted) * (ofUpper ? -1.0 : 1.0);
        (excess > 0.0 ? high : low) = odds;
        const double slope = static_cast<double>(exponential(distribution.logSlope(x, y) - tail.logarithm));
        const double next = odds * static_cast<double>(exponential(-excess / slope));
        if (std::abs(next - odds) <= 2.0 * epsilon * odds || std::abs(excess) <= nearest)
            return next;
        odds = next > low && next < high ? next : std::sqrt(low) * std::sqrt(high);
    }
    return odds;
}

double quantile(double p, double a, double b, bool ofUpper)
{
    if (!(p >= 0.0 && p <= 1.0))
        return notANumber;
    if (p == 0.0 || p == 1.0)
        return (p == 0.0) == ofUpper ? 1.0 : 0.0;
    const DoubleDouble odds = oddsOfQuantile(p, a, b, ofUpper);
    return static_cast<double>(odds / (1.0 + odds));
}

} // namespace

DoubleDouble logGamma(DoubleDouble x) noexcept
{
    constexpr double far = 24.0;
    DoubleDouble product = 1.0;
    for (; x.high() < far; x = x + 1.0)
        product = product * x;
    const DoubleDouble inverse = 1.0 / x;
    const DoubleDouble square = inverse * inverse;
    DoubleDouble sum = 0.0;
    for (auto coefficient = stirling.rbegin(); coefficient != stirling.rend(); ++coefficient)
        sum = sum * square + *coefficient;
    return (x - 0.5) * logarithm(x) - x + halfLogTwoPi + sum * inverse - logarithm(product);
}

Tail normalUpperTail(double z) noexcept
{
    if (std::isnan(z))
        return {z, z};
    constexpr double largest = 1e150; // whose square is a double
    if (std::abs(z) > largest)
        return z > 0.0 ? Tail{0.0, -infinity} : Tail{1.0, 0.0};
    return normalTail(z, DoubleDouble::product(z, z));
}

Tail studentUpperTail(double t, double freedom) noexcept
{
    if (std::isnan(t) || !(freedom > 0.0))
        return {notANumber, notANumber};
    if (std::isinf(t))
        return t > 0.0 ? Tail{0.0, -infinity} : Tail{1.0, 0.0};
    constexpr double far = 1e150; // beyond it t^2 is no double, and t^2 + freedom is t^2
    const DoubleDouble square = DoubleDouble::product(t, t);
    const bool isFar = std::abs(t) > far;
    const DoubleDouble x = isFar ? DoubleDouble(freedom) / t / t : freedom / (square + freedom);
    const DoubleDouble y = isFar ? DoubleDouble(1.0) : square / (square + freedom);
    const Tail both = t == 0.0 ? Tail{1.0, 0.0} : BetaDistribution(0.5 * freedom, 0.5).tailsAt(x, y).lower;
    const double half = 0.5 * both.probability;
    if (t < 0.0)
        return {1.0 - half, static_cast<double>(logarithmOfOnePlus(-half))};
    return {half, both.logarithm - std::numbers::ln2};
}

double fisherUpperTail(double x, double numerator, double denominator) noexcept
{
    if (std::isnan(x) || !(numerator > 0.0 && denominator > 0.0))
        return notANumber;
    if (x <= 0.0 || std::isinf(x))
        return x <= 0.0 ? 1.0 : 0.0;
    const DoubleDouble scaled = DoubleDouble::product(x, numerator);
    const DoubleDouble sum = scaled + denominator;
    return BetaDistribution(0.5 * denominator, 0.5 * numerator)
        .tailsAt(denominator / sum, scaled / sum)
        .lower.probability;
}

double chiSquareUpperTail(double x, std::int64_t freedom) noexcept
{
    if (std::isnan(x) || freedom < 1)
        return notANumber;
    if (x <= 0.0 || std::isinf(x))
        return x <= 0.0 ? 1.0 : 0.0;
    // e^-h times the sum of h^m / Gamma(m + 1), m = 0, 1, ... below freedom / 2; for an odd number of degrees m = 1/2,
    // 3/2, ... and the normal tails beside.
    const double h = 0.5 * x;
    const bool odd = freedom % 2 != 0;
    const double first = odd ? 0.5 : 0.0;
    const std::int64_t wholeTerms = freedom / 2;
    const auto terms = static_cast<double>(wholeTerms);
    double tail = odd ? 2.0 * normalTail(root(x), x).probability : 0.0;
    if (terms == 0.0)
        return tail;
    const double largest = first + std::clamp(std::floor(h - first), 0.0, terms - 1.0);
    const DoubleDouble logTerm = logarithm(h) * largest - h - logGamma(DoubleDouble::sum(largest, 1.0));
    DoubleDouble sum = 1.0;
    DoubleDouble term = 1.0;
    for (double m = largest; m > first && term.high() > 1e-20; m -= 1.0)
        sum = sum + (term = term * m / h);
    term = 1.0;
    for (double m = largest + 1.0; m < terms + first && term.high() > 1e-20; m += 1.0)
        sum = sum + (term = term * h / m);
    tail += static_cast<double>(exponential(logTerm) * sum);
    return std::min(tail, 1.0);
}

BothTails betaTails(double a, double b, double x) noexcept
{
    if (std::isnan(x) || !(a > 0.0 && b > 0.0))
        return {notANumber, notANumber};
    if (x <= 0.0 || x >= 1.0)
        return x <= 0.0 ? BothTails{0.0, 1.0} : BothTails{1.0, 0.0};
    const LogTails tails = BetaDistribution(a, b).tailsAt(x, DoubleDouble::sum(1.0, -x));
    return {tails.lower.probability, tails.upper.probability};
}

double betaQuantile(double p, double a, double b) noexcept { return quantile(p, a, b, false); }
double betaUpperQuantile(double p, double a, double b) noexcept { return quantile(p, a, b, true); }

double studentUpperQuantile(double p, double freedom) noexcept
{
    if (!(p > 0.0 && p < 1.0) || !(freedom > 0.0))
        return notANumber;
    if (p > 0.5)
        return -studentUpperQuantile(1.0 - p, freedom);
    if (p == 0.5)
        return 0.0;
    // freedom / t^2 is the ratio x / (1 - x) at the quantile of Beta(freedom / 2, 1 / 2)
    return static_cast<double>(root(freedom / oddsOfQuantile(2.0 * p, 0.5 * freedom, 0.5, false)));
}

} // namespace ROCALG_920
