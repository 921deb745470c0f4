#include "cli/words/Letters.h"

#include <algorithm>

namespace vexroc {

std::string_view trimmed(std::string_view text) noexcept
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool endsWithIgnoringCase(std::string_view text, std::string_view ending) noexcept
{
    return text.size() >= ending.size() && equalIgnoringCase(text.substr(text.size() - ending.size()), ending);
}

char lowerLetter(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept
{
    return std::ranges::equal(a, b, {}, lowerLetter, lowerLetter);
}

} // namespace vexroc
