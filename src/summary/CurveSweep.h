#pragma once

#include "summary/CutOffCounts.h"
#include "summary/ValueWalk.h"

#include <cstdint>
#include <limits>
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
    StateCounts counts;
};

inline constexpr std::int64_t leastCurveCases = 3;

/// Is there a curve of cases in these states?
[[nodiscard]] inline bool hasCurve(const StateCounts& cases) noexcept
{
    return cases.cases() >= leastCurveCases && cases.bothStates();
}

/// The cut-offs at both ends: 0 and 1 around values that all lie inside (0, 1), else one below and one above.
[[nodiscard]] inline std::pair<double, double> endPoints(double lowest, double highest) noexcept
{
    if (1.0 > highest && highest > 0.0 && lowest > 0.0 && 1.0 > lowest)
        return {0.0, 1.0};
    return {lowest + (-1.0), highest + 1.0};
}

/// Turns the counts left of a cut-off into a classification. The left is the negative side when larger values are
/// positive and the positive side otherwise; a value equal to the cut-off joins the side that includeCutOff gives it.
class SideOfCutOff {
public:
    SideOfCutOff(const StateCounts& all, CurveOptions options)
        : all_(all), larger_(options.largerTestMorePositive),
          equalIsLeft_(options.includeCutOff != options.largerTestMorePositive)
    {
    }

    [[nodiscard]] bool isLeft(double value, double cutOff) const noexcept
    {
        return value < cutOff || (equalIsLeft_ && value == cutOff);
    }
    [[nodiscard]] CutOffCounts classify(const StateCounts& left) const noexcept
    {
        if (larger_)
            return {all_.positives - left.positives, all_.negatives - left.negatives, left.negatives, left.positives};
        return {left.positives, left.negatives, all_.negatives - left.negatives, all_.positives - left.positives};
    }

private:
    StateCounts all_;
    bool larger_;
    bool equalIsLeft_;
};

/// The cut-offs of values whose sums stay finite: every midpoint lies between its two neighbours or rounds onto one, so
/// that all values below the lower neighbour are left of it and none above the upper one.
template <ValueWalk Walk, class Visit>
void forEachCutOffBetween(Walk values, const CurveTotals& totals, const SideOfCutOff& side, Visit&& visit)
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

/// The cut-offs of any values: a midpoint may overflow or be undefined. Counting goes on from where the previous
/// cut-off stopped, so the counts never fall.
template <ValueWalk Walk, class Visit>
void forEachCutOffAnywhere(Walk values, const CurveTotals& totals, const SideOfCutOff& side, Visit&& visit)
{
    const auto [first, last] = endPoints(totals.lowest, totals.highest);
    StateCounts left;
    Walk counted = values; // runs ahead of the values that make cut-offs
    DistinctValue next;    // the first value that is not left of the cut-off
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

/// Calls visit(cut-off, CutOffCounts) for every cut-off in ascending order: both end points and the midpoint of every
/// two neighbouring distinct values. k distinct values (k >= 1), which the walk comes by, give k + 1 cut-offs.
template <ValueWalk Walk, class Visit>
void forEachCutOff(const Walk& values, const CurveTotals& totals, CurveOptions options, Visit&& visit)
{
    constexpr double half = std::numeric_limits<double>::max() / 2;
    const SideOfCutOff side(totals.counts, options);
    if (-half <= totals.lowest && totals.highest <= half)
        forEachCutOffBetween(values, totals, side, visit);
    else
        forEachCutOffAnywhere(values, totals, side, visit);
}

} // namespace ROCALG_920
