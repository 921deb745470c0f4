#pragma once

#include "cli/output/Table.h"

#include <array>

namespace vexroc {

// The columns that the tables of several documents have in common.

inline constexpr TableColumn testColumn{"test", "test", CellRole::name};
inline constexpr TableColumn cutOffColumn{"cut_off", "cut-off", CellRole::measure};
inline constexpr TableColumn sensitivityColumn{"sensitivity", "sensitivity", CellRole::statistic};
inline constexpr TableColumn specificityColumn{"specificity", "specificity", CellRole::statistic};
inline constexpr TableColumn recallColumn{"recall", "recall", CellRole::statistic};
inline constexpr TableColumn precisionColumn{"precision", "precision", CellRole::statistic};
inline constexpr TableColumn interpolatedColumn{"interpolated", "interpolated", CellRole::flag};

inline constexpr std::array stateColumns{
    TableColumn{"positive", "positive", CellRole::count},
    TableColumn{"negative", "negative", CellRole::count},
};

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
