#pragma once

#include "cli/study/Remarks.h"

#include <string>
#include <vector>

namespace vexroc {

/// What a command has to say, complete before a byte of it is written.
struct Report {
    std::string text;      ///< for standard output, or the file
    std::string file = {}; ///< empty for standard output
    // For standard error.
    std::vector<Remark> notes = {};
    std::vector<Remark> cautions = {};
    std::string error = {}; ///< why the analysis came to no result; the program then ends with exitNoResult
};

} // namespace vexroc
