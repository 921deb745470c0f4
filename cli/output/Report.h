#pragma once

#include "cli/output/Table.h"

#include <string>
#include <vector>

namespace vexroc {

/// What a subcommand has to say, complete before a byte of it is written.
struct Report {
    std::string text; ///< for standard output
    // For standard error, one line each, already visible text.
    std::vector<std::string> notes;
    std::vector<std::string> warnings;
    std::string error; ///< why the analysis came to no result; the program then ends with exitNoResult
};

/// The text of a report: the heading lines, for people only, then the table.
std::string reportText(OutputFormat format, const std::vector<std::string>& heading, const Table& table);

} // namespace vexroc
