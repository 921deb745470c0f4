#include "cli/study/RowSink.h"

#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <cmath>

namespace vexroc {

namespace {

/// What may be wrong with the decimal sign of a cell that is no number.
std::string decimalHint(std::string_view cell, std::optional<char> decimal)
{
    if (decimal == ',')
        return cell.find('.') != std::string_view::npos ? " (with --decimal comma, a number holds no point)" : "";
    if (cell.find(',') == std::string_view::npos || !parseNumber(cell, ','))
        return "";
    return decimal ? " (for decimal commas: --decimal comma)" : " (the decimal sign is a point)";
}

} // namespace

bool hasNoText(const Cell& cell) noexcept
{
    const auto* const number = std::get_if<double>(&cell);
    return std::holds_alternative<std::monostate>(cell) || (number && std::isnan(*number));
}

bool isMissing(const Cell& cell, const MissingWords& words)
{
    if (const auto* const text = std::get_if<std::string_view>(&cell))
        return words.inTest(*text);
    return hasNoText(cell) || (words.holdNumbers() && words.inTest(textOf(cell)));
}

std::optional<double> numberIn(const Cell& cell, char decimal) noexcept
{
    if (const auto* const text = std::get_if<std::string_view>(&cell))
        return parseNumber(*text, decimal);
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
                           const std::string& advice, std::optional<char> decimal)
{
    const std::string fault = isBeyondDouble(cell, decimal.value_or('.'))
        ? " is beyond the range of a double, about 1.8e308; "
        : " is neither a number nor missing; ";
    return place + ", column " + inQuotes(column) + ": " + inQuotes(cell) + fault + advice + decimalHint(cell, decimal);
}

} // namespace vexroc
