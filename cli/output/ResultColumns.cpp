#include "cli/output/ResultColumns.h"

#include <algorithm>
#include <iterator>

namespace vexroc {

std::vector<TableColumn> inPanel(int panel, std::span<const TableColumn> columns)
{
    std::vector<TableColumn> moved(columns.begin(), columns.end());
    for (TableColumn& column : moved)
        column.panel = panel;
    return moved;
}

std::vector<TableColumn> joined(std::initializer_list<std::span<const TableColumn>> parts)
{
    std::vector<TableColumn> columns;
    for (const std::span<const TableColumn> part : parts)
        std::ranges::copy(part, std::back_inserter(columns));
    return columns;
}

} // namespace vexroc
