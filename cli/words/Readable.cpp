#include "cli/words/Readable.h"

#include <array>
#include <charconv>
#include <cmath>

namespace vexroc {

namespace {

std::string digits(double value, std::chars_format format, int precision)
{
    std::array<char, 400> buffer{}; // the largest double has 309 digits before the point
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
    return {buffer.data(), result.ptr};
}

std::string statistic(double value)
{
    constexpr double smallest = 0.00005; // below, four decimals show nothing
    constexpr double largest = 1e9;
    const double size = std::fabs(value);
    if (size == 0.0)
        return "0.0000";
    if (size < smallest || size >= largest)
        return digits(value, std::chars_format::scientific, 1);
    return digits(value, std::chars_format::fixed, 4);
}

} // namespace

std::string readable(double value, CellRole role)
{
    if (std::isnan(value))
        return "NA";
    switch (role) {
    case CellRole::flag: return value != 0.0 ? "yes" : "no";
    case CellRole::statistic: return statistic(value);
    case CellRole::pValue: return value < 0.0001 ? "<0.0001" : statistic(value);
    case CellRole::measure:
    case CellRole::cutOff: return digits(value, std::chars_format::general, 8);
    case CellRole::name:
    case CellRole::count: break;
    }
    return wholeDigits(value);
}

std::string wholeDigits(double value) { return digits(value, std::chars_format::fixed, 0); }

} // namespace vexroc
