#include "inference/OperatingStatistics.h"

#include "host/VexMV.h"
#include "numeric/Int128.h"
#include "numeric/elementary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// The four counts in numbers whose products are exact: doubles up to 2^26 cases, Int128 beyond. With fractions added,
/// doubles that round.
template <class Number>
struct Cells {
    Number tp, fp, tn, fn;

    [[nodiscard]] Number positives() const { return tp + fn; }
    [[nodiscard]] Number negatives() const { return fp + tn; }
    [[nodiscard]] Number calledPositive() const { return tp + fp; }
    [[nodiscard]] Number calledNegative() const { return tn + fn; }
    /// Youden's index times P N, which is TP TN - FP FN too.
    [[nodiscard]] Number determinant() const { return tp * negatives() - fp * positives(); }
    [[nodiscard]] bool hasEmpty() const { return tp == 0 || fp == 0 || tn == 0 || fn == 0; } // exact
    [[nodiscard]] Cells<double> plus(double added) const
    {
        return {static_cast<double>(tp) + added, static_cast<double>(fp) + added, static_cast<double>(tn) + added,
                static_cast<double>(fn) + added};
    }
    /// The calls seen as those of the other state.
    [[nodiscard]] Cells exchanged() const { return {tn, fn, tp, fp}; }
};

/// 0/0 is missing, c/0 infinite. Without a branch, for lists.
template <class Number>
double ratio(Number numerator, Number denominator)
{
    const double quotient = static_cast<double>(numerator) / static_cast<double>(denominator);
    return std::isnan(quotient) ? missing : quotient;
}

// One class a statistic: value(cells) and, where the value is not missing, limits(cells, value). Both states occur.

template <class Number>
struct Count {
    Number count;
    Number all;
};
template <class Number>
Count(Number, Number) -> Count<Number>;

/// A share of so many cases among others, which `count` finds in the cells.
template <class CountOf>
struct Share {
    const OperatingOptions& options;
    CountOf countOf;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        const Count<Number> c = countOf(x);
        return ratio(c.count, c.all);
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& x, double) const
    {
        const Count<Number> c = countOf(x);
        if (options.proportion == ProportionInterval::wilson)
            return wilsonLimits(static_cast<double>(c.count), static_cast<double>(c.all), options.zCritical);
        return shareLimits(static_cast<std::int64_t>(c.count), static_cast<std::int64_t>(c.all), options.proportion,
                           options.zCritical, options.level);
    }
};
template <class CountOf>
Share(const OperatingOptions&, CountOf) -> Share<CountOf>;

/// From Wilson's limits of both rates.
struct Youden {
    const OperatingOptions& options;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        return ratio(x.determinant(), x.positives() * x.negatives());
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& x, double) const
    {
        const Cells<double> y = x.plus(0.0);
        const auto wilson = [this](double count, double all) { return wilsonLimits(count, all, options.zCritical); };
        return youdenLimits(y.tp / y.positives(), wilson(y.tp, y.positives()), y.fp / y.negatives(),
                            wilson(y.fp, y.negatives()));
    }
};

struct BalancedAccuracy {
    const OperatingOptions& options;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        return ratio(x.tp * x.negatives() + x.tn * x.positives(), Number{2} * x.positives() * x.negatives());
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& x, double) const
    {
        const Limits youden = Youden{options}.limits(x, 0.0);
        return {(youden.lower + 1.0) / 2.0, (youden.upper + 1.0) / 2.0};
    }
};

/// Limits at e^-half and e^half times the middle, widened to hold the value.
Limits onLogScale(double value, double middle, double half)
{
    const double factor = quickExponential(half);
    const double lower = value == 0.0 ? 0.0 : middle / factor; // exact
    const double upper = std::isinf(value) ? infinity : middle * factor;
    return {std::min(lower, value), std::max(upper, value)};
}

/// TP N / (FP P); with the states' calls exchanged the inverse of FN N / (TN P).
struct LikelihoodRatio {
    const OperatingOptions& options;
    bool ofPositive;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        return ofPositive ? ratio(x.tp * x.negatives(), x.fp * x.positives())
                          : ratio(x.fn * x.negatives(), x.tn * x.positives());
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& x, double value) const
    {
        const Cells<double> y = x.plus(x.hasEmpty() ? 0.5 : 0.0);
        const double hit = ofPositive ? y.tp : y.fn;
        const double miss = ofPositive ? y.fp : y.tn;
        const double variance = 1.0 / hit - 1.0 / y.positives() + 1.0 / miss - 1.0 / y.negatives();
        return onLogScale(value, hit * y.negatives() / (miss * y.positives()), options.zCritical * std::sqrt(variance));
    }
};

struct OddsRatio {
    const OperatingOptions& options;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        return ratio(x.tp * x.tn, x.fp * x.fn);
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& x, double value) const
    {
        const Cells<double> y = x.plus(x.hasEmpty() ? 0.5 : 0.0);
        const double variance = 1.0 / y.tp + 1.0 / y.fp + 1.0 / y.tn + 1.0 / y.fn;
        return onLogScale(value, y.tp * y.tn / (y.fp * y.fn), options.zCritical * std::sqrt(variance));
    }
};

/// Of the positive calls at the share q of the positive state; of the negative ones by exchanging both.
struct PredictiveValue {
    const OperatingOptions& options;
    double q;
    bool exchanged;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& given) const
    {
        const Cells<double> x = (exchanged ? given.exchanged() : given).plus(0.0);
        if (x.calledPositive() == 0.0) // exact
            return missing;
        const double hits = x.tp / x.positives() * q;
        return hits / (hits + x.fp / x.negatives() * (1.0 - q));
    }
    /// On the logit scale; with an empty cell z^2/2 is added to all.
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& given, double value) const
    {
        const Cells<Number> x = exchanged ? given.exchanged() : given;
        const Cells<double> y = x.plus(x.hasEmpty() ? options.zCritical * options.zCritical / 2.0 : 0.0);
        const double sensitivity = y.tp / y.positives();
        const double falseRate = y.fp / y.negatives();
        const double variance = y.fn / y.positives() / y.tp + y.tn / y.negatives() / y.fp;
        const double odds = sensitivity * q / (falseRate * (1.0 - q));
        const double factor = quickExponential(options.zCritical * std::sqrt(variance));
        const auto shareOfOdds = [](double o) { return 1.0 / (1.0 + 1.0 / o); };
        return {std::min(shareOfOdds(odds / factor), value), std::max(shareOfOdds(odds * factor), value)};
    }
};

/// 2 TP / (2 TP + FP + FN); its limits are those of the share of TP among all but TN, mapped by 2g / (1 + g).
struct F1 {
    const OperatingOptions& options;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        return ratio(Number{2} * x.tp, Number{2} * x.tp + x.fp + x.fn);
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& x, double) const
    {
        const Share g{options, [](const auto& y) { return Count{y.tp, y.tp + y.fp + y.fn}; }};
        const auto [lower, upper] = g.limits(x, 0.0);
        return {2.0 * lower / (1.0 + lower), 2.0 * upper / (1.0 + upper)};
    }
};

struct Correlation {
    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        const auto calls = static_cast<double>(x.calledPositive() * x.calledNegative());
        const auto states = static_cast<double>(x.positives() * x.negatives());
        return ratio(static_cast<double>(x.determinant()), std::sqrt(calls * states)); // no calls of a kind: 0/0
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>&, double) const
    {
        return {missing, missing};
    }
};

struct Kappa {
    const OperatingOptions& options;

    template <class Number>
    [[nodiscard]] double value(const Cells<Number>& x) const
    {
        return ratio(Number{2} * x.determinant(),
                     x.calledPositive() * x.negatives() + x.positives() * x.calledNegative());
    }
    template <class Number>
    [[nodiscard]] Limits limits(const Cells<Number>& x, double value) const
    {
        const double half = options.zCritical * stdError(x.plus(0.0), value);
        return {value - half, value + half};
    }

private:
    /// Spread of what kappa changes with a case of each cell, around its mean.
    static double stdError(const Cells<double>& x, double kappa)
    {
        if (x.calledPositive() == 0.0 || x.calledNegative() == 0.0) // exact: kappa is 0, whatever the cases
            return 0.0;
        const double n = x.positives() + x.negatives();
        const double positive = x.positives() / n; // states
        const double called = x.calledPositive() / n;
        const double expected = positive * called + (1.0 - positive) * (1.0 - called);
        const double rest = 1.0 - kappa;
        const double mean = kappa - expected * rest;
        const auto square = [mean](double change) { return (change - mean) * (change - mean); };
        const double sum = x.tp * square(1.0 - (positive + called) * rest)
            + x.tn * square(1.0 - (2.0 - positive - called) * rest) + x.fp * square(-(1.0 - called + positive) * rest)
            + x.fn * square(-(called + 1.0 - positive) * rest);
        return std::sqrt(sum) / n / (1.0 - expected);
    }
};

/// Calls use(statistic) with the class of the statistic.
template <class Use>
void withStatistic(OperatingStatistic statistic, const OperatingOptions& options, Use use)
{
    const bool stated = options.prevalence.has_value();
    const double q = options.prevalence.value_or(0.0);
    switch (statistic) {
    case OperatingStatistic::sensitivity:
        return use(Share{options, [](const auto& x) { return Count{x.tp, x.positives()}; }});
    case OperatingStatistic::specificity:
        return use(Share{options, [](const auto& x) { return Count{x.tn, x.negatives()}; }});
    case OperatingStatistic::ppv:
        return stated ? use(PredictiveValue{options, q, false}) : use(Share{options, [](const auto& x) {
                                                                                return Count{x.tp, x.calledPositive()};
                                                                            }});
    case OperatingStatistic::npv:
        return stated ? use(PredictiveValue{options, 1.0 - q, true})
                      : use(Share{options, [](const auto& x) {
                                      return Count{x.tn, x.calledNegative()};
                                  }});
    case OperatingStatistic::positiveLikelihoodRatio: return use(LikelihoodRatio{options, true});
    case OperatingStatistic::negativeLikelihoodRatio: return use(LikelihoodRatio{options, false});
    case OperatingStatistic::diagnosticOddsRatio: return use(OddsRatio{options});
    case OperatingStatistic::accuracy:
        return use(Share{options, [](const auto& x) { return Count{x.tp + x.tn, x.positives() + x.negatives()}; }});
    case OperatingStatistic::balancedAccuracy: return use(BalancedAccuracy{options});
    case OperatingStatistic::f1: return use(F1{options});
    case OperatingStatistic::mcc: return use(Correlation{});
    case OperatingStatistic::youden: return use(Youden{options});
    case OperatingStatistic::kappa: break;
    }
    return use(Kappa{options});
}

/// cellsAt(i) are those of row i.
template <class Statistic, class CellsAt>
void fillValues(std::size_t rows, const Statistic& statistic, CellsAt cellsAt, double* values)
{
    for (std::size_t i = 0; i < rows; ++i)
        values[i] = statistic.value(cellsAt(i));
}

template <class Statistic, class CellsAt>
void fillLimits(std::size_t rows, const Statistic& statistic, CellsAt cellsAt, bool defined, const EstimateLists& lists)
{
    for (std::size_t i = 0; i < rows; ++i) {
        const auto cells = cellsAt(i);
        const double value = statistic.value(cells);
        const Limits limits = defined && !std::isnan(value) ? statistic.limits(cells, value) : Limits{missing, missing};
        if (lists.lower != nullptr)
            lists.lower[i] = limits.lower;
        if (lists.upper != nullptr)
            lists.upper[i] = limits.upper;
    }
}

template <class CellsAt>
void fillWith(OperatingStatistic which, std::size_t rows, CellsAt cellsAt, const OperatingOptions& options,
              const EstimateLists& lists)
{
    if (lists.value == nullptr && lists.lower == nullptr && lists.upper == nullptr)
        return;
    withStatistic(which, options, [&](const auto& statistic) {
        if (lists.value != nullptr)
            fillValues(rows, statistic, cellsAt, lists.value);
        if (lists.lower != nullptr || lists.upper != nullptr)
            fillLimits(rows, statistic, cellsAt, !std::isnan(options.zCritical), lists);
    });
}

/// Whole numbers in doubles, whose products are exact.
bool fitDoubles(const CutOffCounts& counts)
{
    constexpr std::int64_t most = std::int64_t{1} << 26; // sums of products stay within 2^53
    return counts.positives() + counts.negatives() <= most;
}

} // namespace

void OperatingRows::fill(OperatingStatistic statistic, const OperatingOptions& options,
                         const EstimateLists& lists) const
{
    if (rows_ == 0)
        return;
    if (byWeight_ || fitDoubles(counts_[0])) {
        const auto at = [this](std::size_t i) { return Cells<double>{tp_[i], fp_[i], tn_[i], fn_[i]}; };
        fillWith(statistic, rows_, at, options, lists);
    } else {
        const auto at = [this](std::size_t i) {
            const CutOffCounts& c = counts_[i];
            return Cells<Int128>{c.truePositives, c.falsePositives, c.trueNegatives, c.falseNegatives};
        };
        fillWith(statistic, rows_, at, options, lists);
    }
}

double estimateOf(OperatingStatistic statistic, const CutOffCounts& counts, const OperatingOptions& options)
{
    double value = missing;
    OperatingRows row;
    row.add(counts);
    row.fill(statistic, options, {.value = &value});
    return value;
}

} // namespace ROCALG_920
