#include "labels/Decimal.h"

#include <algorithm>
#include <charconv>

namespace ROCALG_920::labels {

namespace {

/// The digits that the text starts with; the text then starts behind them.
std::string_view takeDigits(std::string_view& text)
{
    const auto end = std::ranges::find_if_not(text, [](char c) { return c >= '0' && c <= '9'; });
    const std::string_view digits(text.data(), static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

/// Takes one of the characters from the front; 0 where none of them stands there.
char takeOneOf(std::string_view& text, std::string_view characters)
{
    if (text.empty() || characters.find(text.front()) == std::string_view::npos)
        return '\0';
    const char c = text.front();
    text.remove_prefix(1);
    return c;
}

/// The power of ten behind the digits: the whole rest of the text, which may be empty.
std::optional<long long> exponentOf(std::string_view text)
{
    constexpr std::size_t mostDigits = 15;
    if (text.empty())
        return 0;
    if (takeOneOf(text, "eE") == '\0')
        return std::nullopt;
    const bool negative = takeOneOf(text, "+-") == '-';
    std::string_view digits = takeDigits(text);
    if (digits.empty() || !text.empty())
        return std::nullopt;
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.size() > mostDigits)
        return std::nullopt;
    long long power = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), power);
    return negative ? -power : power;
}

} // namespace

std::string_view trimmed(std::string_view text) noexcept
{
    constexpr std::string_view blanks = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::optional<Decimal> Decimal::of(std::string_view text, char decimalSign)
{
    text = trimmed(text);
    Decimal number;
    number.negative_ = takeOneOf(text, "+-") == '-';
    const std::string_view whole = takeDigits(text);
    const std::string_view part = takeOneOf(text, {&decimalSign, 1}) != '\0' ? takeDigits(text) : "";
    const std::optional<long long> exponent = exponentOf(text);
    if (!exponent || whole.size() + part.size() == 0 || (whole.size() > 1 && whole.front() == '0'))
        return std::nullopt;

    number.digits_.reserve(whole.size() + part.size());
    number.digits_.append(whole).append(part);
    number.digits_.erase(number.digits_.find_last_not_of('0') + 1);
    const std::size_t zeros = std::min(number.digits_.find_first_not_of('0'), number.digits_.size());
    number.digits_.erase(0, zeros);
    if (number.digits_.empty())
        return Decimal{};
    number.magnitude_ = *exponent + static_cast<long long>(whole.size()) - static_cast<long long>(zeros);
    return number;
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) noexcept
{
    if (a.sign() != b.sign() || a.sign() == 0)
        return a.sign() <=> b.sign();
    const std::strong_ordering size =
        a.magnitude_ != b.magnitude_ ? a.magnitude_ <=> b.magnitude_ : a.digits_.compare(b.digits_) <=> 0;
    return a.negative_ ? 0 <=> size : size;
}

} // namespace ROCALG_920::labels
