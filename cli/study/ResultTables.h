#pragma once

#include "cli/output/Table.h"
#include "cli/study/HostData.h"
#include "vexrocproc/ROCOutputs.h"

#include <string>
#include <vector>

namespace vexroc {

// The results of an analysis as tables, one row per record. `weighted` adds the numbers of cases that the rows of the
// data stand for.

Table caseTable(OutputFormat format, const RowCounts& rows, bool weighted);
Table areaTable(OutputFormat format, const ROCALG_920::ROCOutputs& results, const VexXML_920::VexVarList& variables,
                bool weighted);
/// The same where the analysis of all cases came to no result: their numbers, and no statistic.
Table missingAreaTable(OutputFormat format, const HostData& data);
/// Of tests where it is paired, of groups otherwise.
Table comparisonTable(OutputFormat format, const ROCALG_920::ROCOutputs& results,
                      const VexXML_920::VexVarList& variables, bool paired);

/// The cut-offs at which Youden's index is largest, all ties, with their unweighted counts.
Table bestCutOffTable(OutputFormat format, const ROCALG_920::ROCOutputs& results,
                      const VexXML_920::VexVarList& variables);

/// The points of all ROC curves for CSV.
Table curveTable(const ROCALG_920::ROCOutputs& results, const VexXML_920::VexVarList& variables);
/// The points of all precision-recall curves for CSV, measured ones and those drawn between them.
Table precisionRecallTable(const ROCALG_920::ROCOutputs& results, const VexXML_920::VexVarList& variables);

} // namespace vexroc
