#include "cli/picture/markup.h"

#include "cli/words/VisibleText.h"

#include <array>
#include <charconv>

namespace vexroc::markup {

namespace {

// Of Okabe and Ito's colours, told apart by all kinds of colour vision, those that stand out from white and from dark.
// The last is that of text: on dark a page turns it round.
constexpr std::array colours{"#0072B2", "#D55E00", "#009E73", "#CC79A7", "#000000"};
// The counts of colours and dashes share no factor: 40 curves pass before a pair of them comes again.
// With these, 24.
constexpr std::array greys{"#000000", "#6c6c6c", "#969696"};
constexpr std::array dashes{"", "9 4", "2.5 2.5", "12 3 2.5 3", "5 2.5", "16 3 2.5 3 2.5 3", "20 5", "7 2.5 2.5 2.5"};

} // namespace

std::string pixels(double value)
{
    std::array<char, 32> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 2).ptr;
    std::string digits(buffer.data(), end);
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.ends_with('.'))
        digits.pop_back();
    return digits == "-0" ? "0" : digits;
}

std::string text(std::string_view visibleText)
{
    std::string safe = htmlText(visibleText);
    // XML knows all of Unicode but U+FFFE and U+FFFF: U+FFFD takes their place.
    for (const char* const unknown : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
        for (std::size_t i = safe.find(unknown); i != std::string::npos; i = safe.find(unknown, i))
            safe.replace(i, 3, "\xEF\xBF\xBD");
    return safe;
}

std::string pathOf(const std::vector<PathPoint>& line)
{
    std::string path;
    std::string lastX;
    std::string lastY;
    for (const PathPoint& point : line) {
        const std::string x = pixels(point.x);
        const std::string y = pixels(point.y);
        if (path.empty())
            path += "M" + x + " " + y;
        else if (x != lastX)
            path += y == lastY ? "H" + x : "L" + x + " " + y;
        else if (y != lastY)
            path += "V" + y;
        lastX = x;
        lastY = y;
    }
    return path;
}

std::string colourOf(std::size_t curve)
{
    const std::size_t colour = curve % colours.size();
    return "class=\"c" + std::to_string(colour) + "\" color=\"" + colours[colour] + "\"";
}

std::string greyOf(std::size_t curve) { return std::string("color=\"") + greys[curve % greys.size()] + "\""; }

std::string dashesOf(std::size_t curve)
{
    const std::string pattern = dashes[curve % dashes.size()];
    return pattern.empty() ? "" : " stroke-dasharray=\"" + pattern + "\"";
}

} // namespace vexroc::markup
