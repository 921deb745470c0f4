#pragma once

#include "labels/LabelColumn.h"
#include "labels/States.h"

#include <span>
#include <string>
#include <vector>

namespace ROCALG_920::labels {

/// A remark about a column, by its code in docs/remarks.md.
struct LabelFinding {
    const char* code;
    std::string detail; ///< the texts that it is about
};

/// Missing words, values that differ only in letter case or blanks, and 007 beside 7. Values with the same state are
/// no finding; `states` is parallel to the values, or empty where there are none.
std::vector<LabelFinding> findingsOf(const LabelColumn& column, std::span<const State> states, vexroc_voice voice);

} // namespace ROCALG_920::labels
