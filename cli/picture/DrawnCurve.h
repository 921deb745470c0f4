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
    bool interpolated;
    double cutOff; ///< of a measured point; NaN for the others
};
/// All points of a record, in the order of the curve.
std::vector<PrecisionRecallPoint> precisionRecallOf(const ROCALG_920::ROCOutBase& record);

/// One curve as pictures show it: few enough points to draw.
struct DrawnCurve {
    std::string name; ///< visible text: the test, and its group when there is one; no two are the same
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

    /// "radius_mean: 0.9375 (0.9170 to 0.9580)", and the best cut-off where the picture has too many curves for it to
    /// stand at its dot.
    [[nodiscard]] std::string legend(bool withCutOff) const;
    [[nodiscard]] double prevalence() const { return double(positive) / (double(positive) + negative); }
};

/// With more curves the cut-offs at the dots would cover each other.
constexpr std::size_t mostCutOffLabels = 4;

/// The curves of all records; a record without an area has none. A test that was named twice is drawn once.
std::vector<DrawnCurve> drawnCurves(const ROCALG_920::ROCOutputs& results, const VexXML_920::VexVarList& variables);

/// Says that curves were thinned, and how far; empty where all points are drawn.
std::string thinningNote(const std::vector<DrawnCurve>& curves);

} // namespace vexroc
