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

/// Two tests that are compared.
inline constexpr std::array testPairColumns{
    TableColumn{"test1", "test 1", CellRole::name},
    TableColumn{"test2", "test 2", CellRole::name},
};

/// A test that is compared between two groups.
inline constexpr std::array groupPairColumns{
    testColumn,
    TableColumn{"group1", "group 1", CellRole::name},
    TableColumn{"group2", "group 2", CellRole::name},
};

inline constexpr std::array stateColumns{
    TableColumn{"positive", "positive", CellRole::count},
    TableColumn{"negative", "negative", CellRole::count},
};

inline constexpr std::array areaColumns{
    TableColumn{"area", "area", CellRole::statistic},
    TableColumn{"standard_error", "std. error", CellRole::statistic},
    TableColumn{"p_value", "p", CellRole::pValue},
    TableColumn{"log10_p", "log10 p", CellRole::statistic, TableColumn::noPanel},
    TableColumn{"lower", "lower", CellRole::statistic},
    TableColumn{"upper", "upper", CellRole::statistic},
};

inline constexpr std::array differenceColumns{
    TableColumn{"difference", "difference", CellRole::statistic},
    TableColumn{"standard_error_difference", "std. error", CellRole::statistic},
    TableColumn{"z", "z", CellRole::statistic},
    TableColumn{"p_value", "p", CellRole::pValue},
    TableColumn{"log10_p", "log10 p", CellRole::statistic, TableColumn::noPanel},
    TableColumn{"lower", "lower", CellRole::statistic},
    TableColumn{"upper", "upper", CellRole::statistic},
};

} // namespace vexroc
