#include "cli/study/RowSink.h"

#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vexroc {

namespace {

/// The options for a text that a sign between thousands makes a number; empty where none does.
std::string thousandsHint(std::string_view cell, char decimal)
{
    struct Named {
        Thousands sign;
        std::string_view decimals; ///< that go with it
        const char* hint;
    };
    constexpr std::array signs{Named{Thousands::comma, ".", "for commas between thousands: --thousands comma"},
                               Named{Thousands::point, ",", "for points between thousands: --thousands point"},
                               Named{Thousands::blank, ".,", "for blanks between thousands: --thousands blank"},
                               Named{Thousands::apostrophe, ".,", "for apostrophes: --thousands apostrophe"}};
    for (const auto& [sign, decimals, hint] : signs)
        for (const char candidate : decimals)
            if (const auto grouped = groupedNumber(cell, sign); grouped && parseNumber(grouped->plain, candidate))
                return std::string(hint)
                    + (candidate == decimal   ? ""
                           : candidate == ',' ? " --decimal comma"
                                              : " --decimal point");
    return "";
}

/// What may be wrong with the signs in a cell that is no number.
std::string signHint(std::string_view cell, const std::optional<NumberForm>& form)
{
    const char otherDecimal = form && form->decimal == ',' ? '.' : ',';
    const bool isOther = parseNumber(cell, otherDecimal).has_value();
    if (!form)
        return isOther ? " (the decimal sign is a point)" : "";
    std::string hint = !isOther ? ""
        : otherDecimal == '.'   ? "with --decimal comma, a number holds no decimal point"
                                : "for decimal commas: --decimal comma";
    if (const std::string thousands = thousandsHint(cell, form->decimal);
        !thousands.empty() && form->thousands == Thousands::notSaid)
        hint += (hint.empty() ? "" : "; ") + thousands;
    return hint.empty() ? "" : " (" + hint + ")";
}

/// What a text is that people write for a number, and what to do; empty for any other.
std::string nearlyNumber(std::string_view cell, const NumberForm& form)
{
    const auto isNumber = [&](std::string_view text) { return parseNumber(text, form).has_value(); };
    std::string_view text = trimmed(cell);
    if (text.ends_with('%') && isNumber(text.substr(0, text.size() - 1)))
        return "has a per cent sign; write the numbers of the column without it";
    constexpr std::array<std::string_view, 4> less{"<=", "\u2264", "=<", "<"};
    constexpr std::array<std::string_view, 4> more{">=", "\u2265", "=>", ">"};
    const auto startsAs = [&](std::string_view sign) {
        return text.starts_with(sign) && isNumber(text.substr(sign.size()));
    };
    const bool below = std::ranges::any_of(less, startsAs);
    if (!below && std::ranges::none_of(more, startsAs))
        return "";
    const std::string side = below ? "below" : "above";
    return "is a limit, not a number; for a ROC curve only the order of the values counts: write one number " + side
        + " all measured ones in every such cell";
}

/// How to say that a text stands for a missing value, where it may.
std::string missingOption(std::string_view cell)
{
    constexpr std::size_t longestWord = 20;
    const bool isWord = cell.size() <= longestWord && cell.find_first_of(",\"") == std::string_view::npos;
    return isWord ? "; if it means a missing value, add --missing " + shellWord(cell) : "";
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

std::optional<double> numberIn(const Cell& cell, const NumberForm& form)
{
    if (const auto* const text = std::get_if<std::string_view>(&cell))
        return parseNumber(*text, form);
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
                           const std::string& advice, const std::optional<NumberForm>& form)
{
    const NumberForm numbers = form.value_or(NumberForm{});
    const std::string front = place + ", column " + inQuotes(column) + ": " + inQuotes(cell) + ' ';
    if (!isUtf8(cell))
        return front + "holds bytes that are not UTF-8; give a query that makes it text, such as hex of it";
    if (const std::string known = nearlyNumber(cell, numbers); !known.empty())
        return front + known;
    const std::string fault = isBeyondDouble(cell, numbers.decimal) ? "is beyond the range of a double, about 1.8e308; "
                                                                    : "is neither a number nor missing; ";
    const std::string hint = signHint(cell, form);
    return front + fault + advice + (hint.empty() && form ? missingOption(cell) : hint);
}

} // namespace vexroc
