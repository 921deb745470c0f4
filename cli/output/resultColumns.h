#pragma once

#include "cli/output/Table.h"

#include <array>

namespace vexroc {

// The columns that the tables of several documents have in common.

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

} // namespace vexroc
