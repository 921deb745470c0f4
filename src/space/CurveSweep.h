#pragma once

#include "space/ClsResult.h"
#include "space/DistinctValue.h"
#include "space/SortedValues.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>

/// The curve of one test variable as linear sweeps over its distinct values, for whoever wants the numbers one by
/// one instead of as lists.
namespace ROCALG_920 {

/// What decides the curve beside the observations.
struct CurveOptions {
    bool includeCutOff;          ///< a value equal to a cut-off is on the positive side
    bool largerTestMorePositive; ///< larger test values indicate the positive state
};

/// The ends of the scale and the total counts of the observations behind a curve.
struct CurveTotals {
    double lowest;  ///< smallest test value
    double highest; ///< largest test value
    int positives;
    int negatives;
};

/// The cut-offs at both ends: 0 and 1 around values that all lie inside (0, 1), else one below and one above.
[[nodiscard]] inline std::pair<double, double> endPoints(double lowest, double highest) noexcept
{
    if (1.0 > highest && highest > 0.0 && lowest > 0.0 && 1.0 > lowest)
        return {0.0, 1.0};
    return {lowest + (-1.0), highest + 1.0};
}

/// Counts of observations in each state.
struct StateCounts {
    int positives = 0;
    int negatives = 0;

    void add(const DistinctValue& x) noexcept
    {
        positives += x.positives;
        negatives += x.negatives;
    }
};

/// Turns the counts left of a cut-off into a classification. The left is the negative side when larger values are
/// positive and the positive side otherwise; a value equal to the cut-off joins the side that includeCutOff gives it.
class SideOfCutOff {
public:
    SideOfCutOff(const CurveTotals& totals, CurveOptions options)
        : totals_(totals), larger_(options.largerTestMorePositive),
          equalIsLeft_(options.includeCutOff != options.largerTestMorePositive)
    {
    }

    [[nodiscard]] bool isLeft(double value, double cutOff) const noexcept
    {
        return value < cutOff || (equalIsLeft_ && value == cutOff);
    }
    [[nodiscard]] ClsResult classify(const StateCounts& left) const noexcept
    {
        if (larger_)
            return {static_cast<double>(left.positives), static_cast<double>(left.negatives)};
        return {static_cast<double>(totals_.positives - left.positives),
                static_cast<double>(totals_.negatives - left.negatives)};
    }

private:
    CurveTotals totals_;
    bool larger_;
    bool equalIsLeft_;
};

/// The cut-offs of values whose sums stay finite: every midpoint lies between its two neighbours or rounds onto one, so
/// that all values below the lower neighbour are left of it and none above the upper one.
template <class Cursor, class Visit>
void forEachCutOffBetween(Cursor values, const CurveTotals& totals, const SideOfCutOff& side, Visit&& visit)
{
    const auto [first, last] = endPoints(totals.lowest, totals.highest);
    StateCounts below; // left of every cut-off to come
    DistinctValue lower;
    if (!values.next(lower))
        return;
    const auto visitAt = [&](double cutOff, const DistinctValue& upper) {
        StateCounts left = below;
        if (side.isLeft(lower.value, cutOff))
            left.add(lower);
        if (side.isLeft(upper.value, cutOff))
            left.add(upper);
        visit(cutOff, side.classify(left));
    };
    visitAt(first, DistinctValue{lower.value, 0, 0});
    for (DistinctValue upper; values.next(upper); lower = upper) {
        visitAt((lower.value + upper.value) * 0.5, upper);
        below.add(lower);
    }
    visitAt(last, DistinctValue{lower.value, 0, 0});
}

/// The cut-offs of any values: a midpoint may overflow or be undefined. Counting goes on from where the previous cut-off
/// stopped, so the counts never fall.
template <class Cursor, class Visit>
void forEachCutOffAnywhere(Cursor values, const CurveTotals& totals, const SideOfCutOff& side, Visit&& visit)
{
    const auto [first, last] = endPoints(totals.lowest, totals.highest);
    StateCounts left;
    Cursor counted = values; // runs ahead of the values that make cut-offs
    DistinctValue next;      // the first value that is not left of the cut-off
    bool more = counted.next(next);
    const auto visitAt = [&](double cutOff) {
        for (; more && side.isLeft(next.value, cutOff); more = counted.next(next))
            left.add(next);
        visit(cutOff, side.classify(left));
    };
    DistinctValue lower;
    if (!values.next(lower))
        return;
    visitAt(first);
    for (DistinctValue upper; values.next(upper); lower = upper)
        visitAt((lower.value + upper.value) * 0.5);
    visitAt(last);
}

/// Calls visit(cut-off, ClsResult) for every cut-off in ascending order: both end points and the midpoint of every
/// two neighbouring distinct values. k distinct values (k >= 1), which the cursor comes by, give k + 1 cut-offs.
template <class Cursor, class Visit>
void forEachCutOff(const Cursor& values, const CurveTotals& totals, CurveOptions options, Visit&& visit)
{
    constexpr double half = std::numeric_limits<double>::max() / 2;
    const SideOfCutOff side(totals, options);
    if (-half <= totals.lowest && totals.highest <= half)
        forEachCutOffBetween(values, totals, side, visit);
    else
        forEachCutOffAnywhere(values, totals, side, visit);
}

/// Turns the classification counts of successive cut-offs into precision-recall points.
///
/// Sources: Davis and Goadrich (2006), The relationship between precision-recall and ROC curves, ICML (along true
/// positives); Keilwagen, Grosse and Grau (2014), Area under precision-recall curves for weighted and unweighted
/// data, PLoS ONE 9(3) e92209 (along false positives).
class PrecisionRecallSweep {
public:
    PrecisionRecallSweep(int positives, int negatives, bool alongTP)
        : positives_(positives), negatives_(negatives), alongTP_(alongTP)
    {
    }

    /// The measured point of the next cut-off, preceded by the points interpolated on the way to it. Calls
    /// point(true positives, cases classified as positive, interpolated) for each, in order from the previous
    /// cut-off to this one. Their quotient is the precision, 0/0 where nothing is classified as positive.
    template <class Point>
    void step(const ClsResult& result, Point&& point)
    {
        const Counts current{positives_ - result.falseNegative, negatives_ - result.trueNegative};
        if (measured_ > 0)
            interpolate(current, [&](double tp, double classifiedPositive) { point(tp, classifiedPositive, true); });
        point(current.tp, current.positives(), false);
        if (measured_ < firstTwo_.size())
            firstTwo_[measured_] = current;
        ++measured_;
        beforePrevious_ = previous_;
        previous_ = current;
    }

    /// The measured point at the end where nothing is classified as positive, the last when larger values are positive
    /// and the first otherwise, has no precision of its own; it takes that of the nearest measured point. After the
    /// last step: what the end point takes, if it lacks a precision.
    [[nodiscard]] std::optional<double> lentPrecision(bool largerTestMorePositive) const noexcept
    {
        if (measured_ < 2)
            return std::nullopt;
        if (largerTestMorePositive)
            return previous_.positives() == 0.0 ? std::optional(beforePrevious_.precision()) : std::nullopt;
        return firstTwo_[0].positives() == 0.0 ? std::optional(firstTwo_[1].precision()) : std::nullopt;
    }

    /// Some step moved several true positives at once between unequal precisions.
    [[nodiscard]] bool tiesSeen() const noexcept { return tiesSeen_; }

private:
    struct Counts {
        double tp = 0.0;
        double fp = 0.0;

        [[nodiscard]] double positives() const noexcept { return tp + fp; }
        [[nodiscard]] double precision() const noexcept { return tp / positives(); }
    };

    template <class Point>
    void interpolate(const Counts& current, Point&& point)
    {
        const double d = previous_.tp - current.tp;
        const int moved = static_cast<int>(std::abs(d));
        if (moved < 2 || current.precision() == previous_.precision())
            return;
        tiesSeen_ = true;
        const Counts& low = d > 0.0 ? current : previous_;
        const Counts& high = d > 0.0 ? previous_ : current;
        const auto tpStep = [&](int k) {
            const double s = (high.fp - low.fp) / (high.tp - low.tp);
            const double t = low.tp + k;
            point(t, k * s + (low.fp + t));
        };
        const auto fpStep = [&](int k) {
            const double s = (high.tp - low.tp) / (high.fp - low.fp);
            const double t = low.tp + k * s;
            const double f = low.fp + k;
            point(t, t + f);
        };
        const bool falling = d > 0.0; // the current point is the low one: count down toward it
        if (alongTP_)
            forEachBetween(moved, falling, tpStep);
        else
            forEachBetween(static_cast<int>(high.fp - low.fp), falling, fpStep);
    }

    template <class Step>
    static void forEachBetween(int distance, bool falling, Step&& step)
    {
        for (int i = 1; i < distance; ++i)
            step(falling ? distance - i : i);
    }

    double positives_;
    double negatives_;
    bool alongTP_;
    bool tiesSeen_ = false;
    std::size_t measured_ = 0; ///< points so far, interpolated ones not counted
    Counts previous_;          ///< at the last measured point
    Counts beforePrevious_;    ///< at the measured point before it
    std::array<Counts, 2> firstTwo_;
};

} // namespace ROCALG_920
