#pragma once

#include "cli/output/Table.h"

#include <array>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace vexroc {

// The columns that the tables of several subcommands have in common.

inline constexpr std::array areaColumns{
    TableColumn{"area", "area", CellRole::statistic},
    TableColumn{"standard_error", "std. error", CellRole::statistic},
    TableColumn{"significance", "significance", CellRole::significance},
    TableColumn{"lower", "lower", CellRole::statistic},
    TableColumn{"upper", "upper", CellRole::statistic},
};

inline constexpr std::array differenceColumns{
    TableColumn{"difference", "difference", CellRole::statistic},
    TableColumn{"standard_error_difference", "std. error", CellRole::statistic},
    TableColumn{"z", "z", CellRole::statistic},
    TableColumn{"significance", "significance", CellRole::significance},
    TableColumn{"lower", "lower", CellRole::statistic},
    TableColumn{"upper", "upper", CellRole::statistic},
};

/// Columns as one panel of a wide table.
std::vector<TableColumn> inPanel(int panel, std::span<const TableColumn> columns);
std::vector<TableColumn> joined(std::initializer_list<std::span<const TableColumn>> parts);

/// The cells of one row: its names, then its numbers.
class Row {
public:
    explicit Row(std::initializer_list<std::string_view> names) : values_(names.begin(), names.end()) {}
    Row& add(std::initializer_list<double> numbers)
    {
        values_.insert(values_.end(), numbers.begin(), numbers.end());
        return *this;
    }
    [[nodiscard]] std::span<const Table::Value> values() const noexcept { return values_; }

private:
    std::vector<Table::Value> values_;
};

} // namespace vexroc
