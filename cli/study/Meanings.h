#pragma once

#include "cli/output/Report.h"
#include "host/VexVarList.h"
#include "host/VexWarnings.h"
#include "vexrocproc/ROCOutBase.h"

#include <string>
#include <vector>

namespace vexroc {

// What the component answers in codes and positions, said in words and names. All results are visible text, except
// names and groups, which are as the data spell them.

std::string variableName(const VexXML_920::VexVarList& variables, int index);

/// The cases of a record: "sex = female", "age < 50", "age >= 50", or "all cases".
std::string groupOf(const ROCALG_920::ROCOutBase& record, const VexXML_920::VexVarList& variables);

/// Each warning with its code, its name and a sentence.
std::vector<Warning> inWords(const VexCommon_920::VexWarnings& warnings, const VexXML_920::VexVarList& variables);

/// The status of a run that came to no result, with what to do about it.
Warning inWords(const VexCommon_920::VexStatus& status);

} // namespace vexroc
