#pragma once

#include "summary/CutOffCounts.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace ROCALG_920 {

/// Turns the classification counts of successive cut-offs into precision-recall points.
///
/// Sources: Davis and Goadrich (2006), The relationship between precision-recall and ROC curves, ICML (along true
/// positives); Keilwagen, Grosse and Grau (2014), Area under precision-recall curves for weighted and unweighted
/// data, PLoS ONE 9(3) e92209 (along false positives).
class PrecisionRecallSweep {
public:
    explicit PrecisionRecallSweep(bool alongTP) : alongTP_(alongTP) {}

    /// The measured point of the next cut-off, preceded by the points interpolated on the way to it. Calls
    /// point(precision, recall, interpolated) for each, in order from the previous cut-off to this one. The precision
    /// is 0/0 where nothing is classified as positive.
    template <class Point>
    void step(const CutOffCounts& result, Point&& point)
    {
        const Counts current{static_cast<double>(result.truePositives), static_cast<double>(result.falsePositives)};
        const double positives = static_cast<double>(result.positives());
        if (measured_ > 0)
            interpolate(current, [&](double tp, double classifiedPositive) {
                point(tp / classifiedPositive, tp / positives, true);
            });
        point(current.precision(), current.tp / positives, false);
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
        const double moved = std::abs(d);
        if (moved < 2 || current.precision() == previous_.precision())
            return;
        tiesSeen_ = true;
        const Counts& low = d > 0.0 ? current : previous_;
        const Counts& high = d > 0.0 ? previous_ : current;
        const auto tpStep = [&](double k) {
            const double s = (high.fp - low.fp) / (high.tp - low.tp);
            const double t = low.tp + k;
            point(t, k * s + (low.fp + t));
        };
        const auto fpStep = [&](double k) {
            const double s = (high.tp - low.tp) / (high.fp - low.fp);
            const double t = low.tp + k * s;
            const double f = low.fp + k;
            point(t, t + f);
        };
        const bool falling = d > 0.0; // the current point is the low one: count down toward it
        if (alongTP_)
            forEachBetween(moved, falling, tpStep);
        else
            forEachBetween(high.fp - low.fp, falling, fpStep);
    }

    template <class Step>
    static void forEachBetween(double distance, bool falling, Step&& step)
    {
        const auto end = static_cast<std::int64_t>(distance); // whole numbers, all exact as doubles
        for (std::int64_t i = 1; i < end; ++i)
            step(static_cast<double>(falling ? end - i : i));
    }

    bool alongTP_;
    bool tiesSeen_ = false;
    std::size_t measured_ = 0; ///< points so far, interpolated ones not counted
    Counts previous_;          ///< at the last measured point
    Counts beforePrevious_;    ///< at the measured point before it
    std::array<Counts, 2> firstTwo_;
};

} // namespace ROCALG_920
