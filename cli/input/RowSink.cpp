#include "cli/input/RowSink.h"

#include "cli/text/Words.h"

#include <algorithm>
#include <cmath>

namespace vexroc {

bool isMissing(const Cell& cell) noexcept
{
    if (const auto* const text = std::get_if<std::string_view>(&cell))
        return isMissingWord(*text);
    if (const auto* const number = std::get_if<double>(&cell))
        return std::isnan(*number);
    return std::holds_alternative<std::monostate>(cell);
}

std::optional<double> numberIn(const Cell& cell) noexcept
{
    if (const auto* const text = std::get_if<std::string_view>(&cell))
        return parseNumber(*text);
    if (const auto* const number = std::get_if<double>(&cell))
        return std::isnan(*number) ? std::nullopt : std::optional(*number);
    if (const auto* const integer = std::get_if<std::int64_t>(&cell))
        return static_cast<double>(*integer);
    if (const auto* const truth = std::get_if<bool>(&cell))
        return *truth ? 1.0 : 0.0;
    return std::nullopt;
}

std::string textOf(const Cell& cell)
{
    if (const auto* const text = std::get_if<std::string_view>(&cell))
        return std::string(*text);
    if (const auto* const number = std::get_if<double>(&cell))
        return shortest(*number);
    if (const auto* const integer = std::get_if<std::int64_t>(&cell))
        return std::to_string(*integer);
    if (const auto* const truth = std::get_if<bool>(&cell))
        return *truth ? "true" : "false";
    return {};
}

std::string badCellMessage(const std::string& place, const std::string& column, std::string_view cell,
                           const std::string& advice)
{
    std::string message = place + ", column " + inQuotes(column) + ": " + inQuotes(cell)
        + " is neither a number nor missing; " + advice;
    std::string withPoint(cell);
    std::ranges::replace(withPoint, ',', '.');
    if (withPoint != cell && parseNumber(withPoint))
        message += " (the decimal sign is a point)";
    return message;
}

} // namespace vexroc
