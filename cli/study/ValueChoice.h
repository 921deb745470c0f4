#pragma once

#include "cli/study/DataTable.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vexroc {

/// The values of interest of one label column, such as the positive state or the two groups to compare.
struct ValueChoice {
    std::string column;
    std::vector<std::string> values;
};

/// One row's answer to a ValueChoice: the index of the value that its cell is, or one of these.
using Match = std::int8_t;
constexpr Match otherValue = -1;
constexpr Match missingValue = -2;

/// Matches every row of a label column. A cell is a value when both are the same text, or both numbers and equal (1 is
/// 1.0). Throws an input error that lists what the column holds when a value never occurs, a usage error when two
/// values are the same.
std::vector<Match> matchRows(const DataTable& data, const ValueChoice& choice);

/// Does a value come before another: numbers ascending, then words by their text? Equal numbers are the same value.
struct LessValue {
    char decimal; ///< sign in the numbers
    bool operator()(const std::string& a, const std::string& b) const;
};
/// The different values of a label column, ascending, each as it is first spelled; 1 and 1.0 are one.
std::vector<std::string> distinctValues(const DataColumn& column);

} // namespace vexroc
