#include "cli/study/DataTable.h"

#include <algorithm>
#include <stdexcept>

namespace vexroc {

namespace {

auto isColumn(std::string_view name, ColumnKind kind)
{
    return [=](const DataColumn& column) { return column.request.kind == kind && column.request.name == name; };
}

} // namespace

bool DataTable::holds(std::string_view name, ColumnKind kind) const noexcept
{
    return std::ranges::any_of(columns, isColumn(name, kind));
}

const DataColumn& DataTable::column(std::string_view name, ColumnKind kind) const
{
    const auto found = std::ranges::find_if(columns, isColumn(name, kind));
    if (found == columns.end())
        throw std::logic_error("column was not requested: " + std::string(name));
    return *found;
}

} // namespace vexroc
