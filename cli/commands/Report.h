#pragma once

#include <string>
#include <vector>

namespace vexroc {

/// What a command has to say, complete before a byte of it is written.
struct Report {
    std::string text;      ///< for standard output, or the file
    std::string file = {}; ///< empty for standard output
    // For standard error, one line each, already visible text.
    std::vector<std::string> notes = {};
    std::vector<std::string> warnings = {};
    std::string error = {}; ///< why the analysis came to no result; the program then ends with exitNoResult
};

} // namespace vexroc
