#pragma once

#include "cli/picture/DrawnCurve.h"
#include "cli/study/Remarks.h"

#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// A self-contained page: the curves to explore, the tables, the notes and the command that made it. It opens offline,
/// tells everything without its script too, and its content policy lets nothing in from outside. All texts are visible
/// text.
struct ReportPage {
    std::string_view command;                ///< as typed in a shell
    std::string_view version;                ///< of the program
    const std::vector<std::string>& heading; ///< its first line is the title
    const Drawing& drawing;
    std::string_view tables; ///< as HTML
    const std::vector<Remark>& cautions;
    const std::vector<Remark>& notes;

    [[nodiscard]] std::string html() const;

    /// To be asked before a long run: throws a usage error for a file whose name is not that of a page.
    static void requirePossible(const std::string& file);
};

} // namespace vexroc
