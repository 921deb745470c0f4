#pragma once

#include <string>

namespace vexroc {

/// What a value is; decides how people are shown it. CSV and JSON never round.
enum class CellRole {
    name,      ///< text
    count,     ///< whole number
    flag,      ///< 1 or 0, for people yes or no
    statistic, ///< four decimals
    pValue,    ///< four decimals, or "<0.0001"
    measure,   ///< on the scale of a test: eight significant digits
    cutOff,    ///< the same, with what it says in words
};

/// A number as people are shown it; NA for NaN.
std::string readable(double value, CellRole role);

/// A whole number in all its digits.
std::string wholeDigits(double value);

} // namespace vexroc
