#pragma once

#include "cli/picture/Thinning.h"
#include "host/VexVarList.h"
#include "vexrocproc/ROCOutputs.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vexroc {

/// A cut-off on a ROC curve, with its unweighted counts.
struct CutOffPoint {
    double cutOff;
    double sensitivity;
    double specificity;
    int truePositive;
    int falsePositive;
};

/// The cut-offs at which Youden's index is the Kolmogorov-Smirnov maximum that the record reports, ascending; ties as
/// the component decides them. Empty without a curve.
std::vector<CutOffPoint> bestCutOffs(const ROCALG_920::ROCOutBase& record);

/// One point of a precision-recall curve.
struct PrecisionRecallPoint {
    double precision;
    double recall;
    std::optional<CutOffPoint> measured; ///< none: interpolated
};
/// All points of a record, in the order of the curve.
std::vector<PrecisionRecallPoint> precisionRecallOf(const ROCALG_920::ROCOutBase& record);

/// One curve as pictures show it: few enough points to draw.
struct DrawnCurve {
    std::string name;   ///< visible text: the test, and its group when there is one
    std::string legend; ///< the name as a legend shows it; filled by prepareForDrawing
    int positive;
    int negative;
    double area;
    double lower;
    double upper;
    std::vector<CutOffPoint> roc;
    std::optional<CutOffPoint> best; ///< the Kolmogorov-Smirnov maximum
    std::vector<PrecisionRecallPoint> precisionRecall;
    std::size_t rocPoints; ///< before thinning
    std::size_t precisionRecallPoints;

    /// "0.9375 [0.9170, 0.9580]"
    [[nodiscard]] std::string areaText() const;
    [[nodiscard]] std::string cutOffText() const; ///< of the best point
    [[nodiscard]] double prevalence() const { return double(positive) / (double(positive) + negative); }
};

/// The curves of all records; a record without an area has none. A test that was named twice is drawn once.
std::vector<DrawnCurve> drawnCurves(const ROCALG_920::ROCOutputs& results, const VexXML_920::VexVarList& variables);

/// More curves than these nobody tells apart.
constexpr std::size_t mostDrawnCurves = 100;

/// Drops the curves behind the first mostDrawnCurves and gives each of the others a name and a legend of its own: names
/// that are shown alike get numbers. Says what was dropped; empty where nothing was.
std::string prepareForDrawing(std::vector<DrawnCurve>& curves);

/// Says that curves were thinned, and how far; empty where all points are drawn.
std::string thinningNote(const std::vector<DrawnCurve>& curves);

/// A picture: its curves, prepared, and the words that make it understood on its own.
struct Drawing {
    const std::vector<DrawnCurve>& curves;
    double level;         ///< of the intervals
    std::string question; ///< which cases are positive, and which values; visible text like the notes
    std::vector<std::string> notes;

    [[nodiscard]] bool hasPrecisionRecall() const;
    /// "area [95 % confidence interval]"
    [[nodiscard]] std::string areaHeading() const;
};

/// The heading of the cut-offs in legends.
constexpr const char* cutOffHeading = "cut-off at the dot";

} // namespace vexroc
