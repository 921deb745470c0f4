#include "cli/words/Numbers.h"

#include "cli/words/Letters.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace vexroc {

namespace {

/// The number that the whole text spells; an infinity also for digits beyond the range of a double. False where it
/// spells none. Not an optional: these are copied in one piece right after they are written in two, which makes the
/// processor wait.
bool spells(std::string_view text, char decimal, double& value) noexcept
{
    if (text.empty())
        return false;
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    if (isBlank(text.front()) || isBlank(text.back()))
        return spells(trimmed(text), decimal, value);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    const fast_float::parse_options options(fast_float::chars_format::general, decimal);
    const auto [stop, error] = fast_float::from_chars_advanced(text.data(), end, value, options);
    return error == std::errc() && stop == end && !std::isnan(value);
}

std::size_t digitsAt(std::string_view text) noexcept
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
}

/// Length of the sign between thousands that begins the text; 0 where none does.
std::size_t signAt(std::string_view text, Thousands sign) noexcept
{
    if (text.starts_with(static_cast<char>(sign)))
        return 1;
    constexpr std::array<std::string_view, 3> blanks{"\u00A0", "\u2009", "\u202F"};
    constexpr std::string_view curved = "\u2019";
    for (const std::string_view blank : blanks)
        if (sign == Thousands::blank && text.starts_with(blank))
            return blank.size();
    return sign == Thousands::apostrophe && text.starts_with(curved) ? curved.size() : 0;
}

bool endsAsInfinityDoes(std::string_view text) noexcept
{
    text = trimmed(text);
    return lowerLetter(text.back()) == 'f' || lowerLetter(text.back()) == 'y';
}

} // namespace

std::optional<double> parseNumber(std::string_view text, char decimal) noexcept
{
    double value = 0.0;
    if (!spells(text, decimal, value) || (std::isinf(value) && !endsAsInfinityDoes(text)))
        return std::nullopt;
    return value;
}

std::optional<double> parseNumber(std::string_view text, const NumberForm& form)
{
    double value = 0.0;
    if (spells(text, form.decimal, value) && !std::isinf(value))
        return value;
    if (form.thousands == Thousands::notSaid || form.thousands == Thousands::none)
        return parseNumber(text, form.decimal);
    const std::optional<GroupedNumber> grouped = groupedNumber(text, form.thousands);
    return parseNumber(grouped ? grouped->plain : text, form.decimal);
}

std::optional<GroupedNumber> groupedNumber(std::string_view text, Thousands sign)
{
    GroupedNumber number;
    text = trimmed(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        number.plain = text.front();
        text.remove_prefix(1);
    }
    std::size_t digits = digitsAt(text);
    if (digits == 0 || digits > 3 || text.front() == '0')
        return std::nullopt;
    for (;;) {
        number.plain += text.substr(0, digits);
        text.remove_prefix(digits);
        const std::size_t length = signAt(text, sign);
        if (length == 0)
            break;
        text.remove_prefix(length);
        digits = digitsAt(text);
        if (digits != 3)
            return std::nullopt;
        ++number.signs;
    }
    number.endsThere = text.empty();
    number.plain += text;
    return number.signs > 0 ? std::optional(std::move(number)) : std::nullopt;
}

bool isBeyondDouble(std::string_view text, char decimal) noexcept
{
    double value = 0.0;
    return spells(text, decimal, value) && !parseNumber(text, decimal);
}

std::string shortest(double value)
{
    if (std::isnan(value))
        return "NA";
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), result.ptr};
}

} // namespace vexroc
