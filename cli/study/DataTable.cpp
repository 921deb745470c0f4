#include "cli/study/DataTable.h"

#include <algorithm>
#include <stdexcept>

namespace vexroc {

const DataColumn& DataTable::column(std::string_view name, ColumnKind kind) const
{
    const auto found = std::ranges::find_if(
        columns, [&](const DataColumn& c) { return c.request.kind == kind && c.request.name == name; });
    if (found == columns.end())
        throw std::logic_error("column was not requested: " + std::string(name));
    return *found;
}

} // namespace vexroc
