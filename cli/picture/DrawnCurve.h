#pragma once

#include "cli/study/Results.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vexroc {

/// One point of a precision-recall curve.
struct PrecisionRecallPoint {
    double precision;
    double recall;
    std::optional<CutOff> measured = {}; ///< none: interpolated
};

/// Where both rates of a point lie together, with the confidence of the picture.
struct RatesBox {
    double leastSensitivity;
    double mostSensitivity;
    double leastSpecificity;
    double mostSpecificity;
};

/// One curve as pictures show it: few enough points to draw.
struct DrawnCurve {
    std::string name;        ///< visible text: the test, and its group when there is one
    std::string legend = {}; ///< the name as a legend shows it; filled by prepareForDrawing
    long long positive;
    long long negative;
    double area;
    double lower; ///< NaN: the area has no interval
    double upper;
    std::vector<CutOff> roc = {};
    std::optional<CutOff> best = {};  ///< the Kolmogorov-Smirnov maximum
    std::vector<RatesBox> boxes = {}; ///< of some of its points; empty where they are not asked for
    std::vector<PrecisionRecallPoint> precisionRecall = {};
    std::size_t rocPoints = 0; ///< before thinning
    std::size_t precisionRecallPoints = 0;

    /// "0.9375 [0.9170, 0.9580]"
    [[nodiscard]] std::string areaText() const;
    /// "15.045", or what the cut-off does: "any".
    [[nodiscard]] std::string cutOffText(const CutOff& point) const;
    [[nodiscard]] std::string cutOffText() const { return best ? cutOffText(*best) : ""; } ///< of the best point
    [[nodiscard]] double prevalence() const { return double(positive) / double(positive + negative); }
};

/// More curves than these nobody tells apart.
constexpr std::size_t mostDrawnCurves = 100;

/// Keeps the mostDrawnCurves largest areas, in their order, and gives each of them a name and a legend of its own:
/// names that are shown alike get numbers. Says what was dropped; empty where nothing was.
std::string prepareForDrawing(std::vector<DrawnCurve>& curves);

/// Says that curves were thinned, and how far; empty where all points are drawn.
std::string thinningNote(const std::vector<DrawnCurve>& curves);

/// A picture: its curves, prepared, and the words that make it understood on its own.
struct Drawing {
    const std::vector<DrawnCurve>& curves;
    std::string interval; ///< "95 % score interval"
    std::string question; ///< which cases are positive, and which values; visible text like the notes
    std::vector<std::string> notes;

    [[nodiscard]] bool hasPrecisionRecall() const;
    /// A heading, then a row per curve: its name, area and cut-off, and beside precision-recall curves its prevalence.
    [[nodiscard]] std::vector<std::vector<std::string>> legend() const;
};

} // namespace vexroc
