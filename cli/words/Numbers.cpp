#include "cli/words/Numbers.h"

#include "cli/words/Letters.h"

#include <fast_float/fast_float.h>

#include <array>
#include <charconv>
#include <cmath>

namespace vexroc {

namespace {

/// The number that the whole text spells; an infinity also for digits beyond the range of a double.
std::optional<double> spelledNumber(std::string_view text, char decimal) noexcept
{
    text = trimmed(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const fast_float::parse_options options(fast_float::chars_format::general, decimal);
    const auto [stop, error] = fast_float::from_chars_advanced(text.data(), end, value, options);
    if (error != std::errc() || stop != end || std::isnan(value))
        return std::nullopt;
    return value;
}

bool endsAsInfinityDoes(std::string_view text) noexcept
{
    text = trimmed(text);
    return lowerLetter(text.back()) == 'f' || lowerLetter(text.back()) == 'y';
}

} // namespace

std::optional<double> parseNumber(std::string_view text, char decimal) noexcept
{
    const std::optional<double> number = spelledNumber(text, decimal);
    return number && std::isinf(*number) && !endsAsInfinityDoes(text) ? std::nullopt : number;
}

bool isBeyondDouble(std::string_view text, char decimal) noexcept
{
    return spelledNumber(text, decimal) && !parseNumber(text, decimal);
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
