#pragma once

#include "cli/picture/DrawnCurve.h"
#include "host/VexVarList.h"
#include "vexrocproc/ROCOutputs.h"

#include <vector>

namespace vexroc {

/// The cut-offs at which Youden's index is the Kolmogorov-Smirnov maximum that the record reports, ascending; ties as
/// the component decides them. Empty without a curve.
std::vector<CutOffPoint> bestCutOffs(const ROCALG_920::ROCOutBase& record);

/// All points of a record's precision-recall curve, in the order of the curve.
std::vector<PrecisionRecallPoint> precisionRecallOf(const ROCALG_920::ROCOutBase& record);

/// The curves of all records; a record without an area has none. A test that was named twice is drawn once.
std::vector<DrawnCurve> drawnCurves(const ROCALG_920::ROCOutputs& results, const VexXML_920::VexVarList& variables);

} // namespace vexroc
