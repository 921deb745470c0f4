#include "inference/OperatingRow.h"

#include "host/VexMV.h"
#include "numeric/Int128.h"
#include "numeric/elementary.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// 0/0 is missing, c/0 infinite.
double ratio(Int128 numerator, Int128 denominator)
{
    if (denominator == 0)
        return numerator == 0 ? missing : infinity;
    return static_cast<double>(numerator) / static_cast<double>(denominator);
}

Estimate alone(double value) { return {value, missing, missing}; }

/// Limits that hold the estimate.
Estimate widened(double value, double lower, double upper)
{
    if (std::isnan(value))
        return alone(missing);
    return {value, std::min(lower, value), std::max(upper, value)};
}

double naturalLogarithm(double x) { return static_cast<double>(logarithm(x)); }
double powerOfE(double x) { return static_cast<double>(exponential(x)); }

/// The cells with as much added to each as they need.
struct Cells {
    double tp, fp, tn, fn;
    [[nodiscard]] double positives() const { return tp + fn; }
    [[nodiscard]] double negatives() const { return fp + tn; }
};

bool hasEmptyCell(const CutOffCounts& c)
{
    return c.truePositives == 0 || c.falsePositives == 0 || c.trueNegatives == 0 || c.falseNegatives == 0;
}

Cells cellsPlus(const CutOffCounts& c, double added)
{
    return {static_cast<double>(c.truePositives) + added, static_cast<double>(c.falsePositives) + added,
            static_cast<double>(c.trueNegatives) + added, static_cast<double>(c.falseNegatives) + added};
}

class RowBuilder {
public:
    RowBuilder(const CutOffCounts& counts, const OperatingOptions& options) : c_(counts), options_(options) {}

    [[nodiscard]] Estimate proportion(std::int64_t count, std::int64_t all) const
    {
        const double value = share(count, all);
        if (!options_.limits || std::isnan(value))
            return alone(value);
        const auto [lower, upper] = shareLimits(count, all, options_.proportion, options_.zCritical, options_.level);
        return {value, lower, upper};
    }

    /// From sensitivity and specificity.
    [[nodiscard]] Estimate youden(const Estimate& se) const
    {
        const double value = ratio(youdenTimesPairs(c_), Int128{c_.positives()} * c_.negatives());
        if (!options_.limits || std::isnan(value))
            return alone(value);
        const Estimate fpr = proportion(c_.falsePositives, c_.negatives());
        const auto [lower, upper] = youdenLimits(se.value, {se.lower, se.upper}, fpr.value, {fpr.lower, fpr.upper});
        return {value, lower, upper};
    }
    [[nodiscard]] Estimate balanced(const Estimate& youden) const
    {
        const Int128 hits = Int128{c_.truePositives} * c_.negatives() + Int128{c_.trueNegatives} * c_.positives();
        return {ratio(hits, Int128{2} * c_.positives() * c_.negatives()), (youden.lower + 1.0) / 2.0,
                (youden.upper + 1.0) / 2.0};
    }

    [[nodiscard]] Estimate positiveLikelihood() const
    {
        const double value =
            ratio(Int128{c_.truePositives} * c_.negatives(), Int128{c_.falsePositives} * c_.positives());
        return onLogScale(value, [](const Cells& x) {
            return Spread{x.tp * x.negatives() / (x.fp * x.positives()),
                          1.0 / x.tp - 1.0 / x.positives() + 1.0 / x.fp - 1.0 / x.negatives()};
        });
    }
    [[nodiscard]] Estimate negativeLikelihood() const
    {
        const double value =
            ratio(Int128{c_.falseNegatives} * c_.negatives(), Int128{c_.trueNegatives} * c_.positives());
        return onLogScale(value, [](const Cells& x) {
            return Spread{x.fn * x.negatives() / (x.tn * x.positives()),
                          1.0 / x.fn - 1.0 / x.positives() + 1.0 / x.tn - 1.0 / x.negatives()};
        });
    }
    [[nodiscard]] Estimate oddsRatio() const
    {
        const double value =
            ratio(Int128{c_.truePositives} * c_.trueNegatives, Int128{c_.falsePositives} * c_.falseNegatives);
        return onLogScale(value, [](const Cells& x) {
            return Spread{x.tp * x.tn / (x.fp * x.fn), 1.0 / x.tp + 1.0 / x.fp + 1.0 / x.tn + 1.0 / x.fn};
        });
    }

    /// 2 TP / (2 TP + FP + FN); its limits are those of the share of TP among all but TN, mapped by 2g / (1 + g).
    [[nodiscard]] Estimate f1() const
    {
        const std::int64_t wrong = c_.falsePositives + c_.falseNegatives;
        const double value = ratio(Int128{2} * c_.truePositives, Int128{2} * c_.truePositives + wrong);
        if (!options_.limits || std::isnan(value))
            return alone(value);
        const Estimate g = proportion(c_.truePositives, c_.truePositives + wrong);
        return {value, 2.0 * g.lower / (1.0 + g.lower), 2.0 * g.upper / (1.0 + g.upper)};
    }
    [[nodiscard]] Estimate mcc() const
    {
        const Int128 called = Int128{c_.classifiedPositive()} * (c_.trueNegatives + c_.falseNegatives);
        const Int128 states = Int128{c_.positives()} * c_.negatives();
        if (called == 0 || states == 0)
            return alone(missing);
        return alone(static_cast<double>(youdenTimesPairs(c_))
                     / (std::sqrt(static_cast<double>(called)) * std::sqrt(static_cast<double>(states))));
    }
    [[nodiscard]] Estimate kappa() const
    {
        const Int128 scale = Int128{c_.classifiedPositive()} * c_.negatives()
            + Int128{c_.positives()} * (c_.falseNegatives + c_.trueNegatives);
        const double value = ratio(2 * youdenTimesPairs(c_), scale);
        if (!options_.limits || std::isnan(value))
            return alone(value);
        const double half = options_.zCritical * kappaError(value);
        return {value, value - half, value + half};
    }

    /// Of the positive calls, or with the states exchanged, of the negative ones, at a stated prevalence.
    [[nodiscard]] Estimate ppvAt(double q) const { return predictive(q, cellsPlus(c_, 0.0)); }
    [[nodiscard]] Estimate npvAt(double q) const
    {
        const Cells x = cellsPlus(c_, 0.0);
        return predictive(1.0 - q, {x.tn, x.fn, x.tp, x.fp});
    }

private:
    struct Spread {
        double value;
        double variance; ///< of its logarithm
    };

    template <class SpreadOf>
    [[nodiscard]] Estimate onLogScale(double value, SpreadOf spreadOf) const
    {
        if (!options_.limits || std::isnan(value))
            return alone(value);
        const auto [middle, variance] = spreadOf(cellsPlus(c_, hasEmptyCell(c_) ? 0.5 : 0.0));
        const double half = options_.zCritical * std::sqrt(variance);
        const double lower = value == 0.0 ? 0.0 : powerOfE(naturalLogarithm(middle) - half); // exact
        const double upper = std::isinf(value) ? infinity : powerOfE(naturalLogarithm(middle) + half);
        return widened(value, lower, upper);
    }

    /// x: the cells with the calls of interest as "positive"; q: the share of the state of interest.
    [[nodiscard]] Estimate predictive(double q, const Cells& x) const
    {
        const double se = x.tp / x.positives();
        const double sp = x.tn / x.negatives();
        const double called = se * q + (1.0 - sp) * (1.0 - q);
        if (std::isnan(called) || x.tp + x.fp == 0.0)
            return alone(missing);
        const double value = se * q / called;
        return options_.limits ? logitLimits(value, q, x) : alone(value);
    }
    [[nodiscard]] Estimate logitLimits(double value, double q, const Cells& x) const
    {
        const bool empty = x.tp == 0.0 || x.fp == 0.0 || x.tn == 0.0 || x.fn == 0.0; // exact
        const double added = empty ? options_.zCritical * options_.zCritical / 2.0 : 0.0;
        const Cells y{x.tp + added, x.fp + added, x.tn + added, x.fn + added};
        const double se = y.tp / y.positives();
        const double fpr = y.fp / y.negatives();
        const double variance = (1.0 - se) / (se * y.positives()) + (1.0 - fpr) / (fpr * y.negatives());
        const double logOdds = naturalLogarithm(se * q / (fpr * (1.0 - q)));
        const double half = options_.zCritical * std::sqrt(variance);
        return widened(value, expit(logOdds - half), expit(logOdds + half));
    }

    /// Fleiss, Cohen and Everitt 1969, Psychol. Bull. 72, 323-327.
    [[nodiscard]] double kappaError(double kappa) const
    {
        const Cells x = cellsPlus(c_, 0.0);
        const double n = x.positives() + x.negatives();
        const double positive = x.positives() / n; // states
        const double called = (x.tp + x.fp) / n;
        const double expected = positive * called + (1.0 - positive) * (1.0 - called);
        const auto square = [](double t) { return t * t; };
        const double agreeing = x.tp / n * square(1.0 - (positive + called) * (1.0 - kappa))
            + x.tn / n * square(1.0 - (2.0 - positive - called) * (1.0 - kappa));
        const double differing = square(1.0 - kappa)
            * (x.fp / n * square(1.0 - called + positive) + x.fn / n * square(called + 1.0 - positive));
        const double rest = square(kappa - expected * (1.0 - kappa));
        return std::sqrt(std::max(agreeing + differing - rest, 0.0) / n) / (1.0 - expected);
    }

    const CutOffCounts& c_;
    const OperatingOptions& options_;
};

} // namespace

OperatingRow operatingRow(double cutOff, const CutOffCounts& c, const OperatingOptions& options)
{
    const RowBuilder row(c, options);
    const std::int64_t calledNegative = c.trueNegatives + c.falseNegatives;
    const Estimate se = row.proportion(c.truePositives, c.positives());
    const Estimate youden = row.youden(se);
    return {.cutOff = cutOff,
            .counts = c,
            .sensitivity = se,
            .specificity = row.proportion(c.trueNegatives, c.negatives()),
            .ppv = options.prevalence ? row.ppvAt(*options.prevalence)
                                      : row.proportion(c.truePositives, c.classifiedPositive()),
            .npv =
                options.prevalence ? row.npvAt(*options.prevalence) : row.proportion(c.trueNegatives, calledNegative),
            .positiveLikelihoodRatio = row.positiveLikelihood(),
            .negativeLikelihoodRatio = row.negativeLikelihood(),
            .diagnosticOddsRatio = row.oddsRatio(),
            .accuracy = row.proportion(c.truePositives + c.trueNegatives, c.positives() + c.negatives()),
            .balancedAccuracy = row.balanced(youden),
            .youden = youden,
            .f1 = row.f1(),
            .mcc = row.mcc(),
            .kappa = row.kappa()};
}

} // namespace ROCALG_920
