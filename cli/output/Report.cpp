#include "cli/output/Report.h"

namespace vexroc {

std::string reportText(OutputFormat format, const std::vector<std::string>& heading, const Table& table)
{
    if (format == OutputFormat::csv)
        return table.str();
    std::string text;
    for (const std::string& line : heading)
        text += line + '\n';
    return text + '\n' + table.str();
}

} // namespace vexroc
