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
    std::string_view command; ///< as typed in a shell
    const Findings& findings; ///< its tables are in OutputFormat::html
    const Drawing& drawing;
    const std::vector<std::string>& notes;
    const std::vector<Warning>& warnings;

    [[nodiscard]] std::string html() const;

    /// To be asked before a long run: throws a usage error for a file whose name is not that of a page, an output error
    /// when this program was built without the libraries of the page.
    static void requirePossible(const std::string& file);
};

} // namespace vexroc
