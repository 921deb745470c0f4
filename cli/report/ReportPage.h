#pragma once

#include "cli/output/Report.h"
#include "cli/picture/DrawnCurve.h"

#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// A self-contained page: the curves to explore, the tables, the notes and the command that made it. It opens offline
/// and its content policy lets nothing in from outside.
struct ReportPage {
    std::string_view command;  ///< as typed in a shell
    const Findings& findings;  ///< its tables are in OutputFormat::html
    const std::vector<DrawnCurve>& curves;
    const std::vector<std::string>& notes;
    const std::vector<Warning>& warnings;

    [[nodiscard]] std::string html() const;

    /// Throws an output error when this program was built without the libraries of the page: to be asked before a long
    /// run.
    static void requireBuilt();
};

} // namespace vexroc
