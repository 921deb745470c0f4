#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vexroc {

namespace {

struct CodePoints {
    char32_t first;
    char32_t last;
};

template <std::size_t size>
bool isIn(const std::array<CodePoints, size>& ranges, char32_t codePoint) noexcept
{
    return std::ranges::any_of(ranges, [=](CodePoints r) { return r.first <= codePoint && codePoint <= r.last; });
}

/// Characters that show nothing themselves, but part or turn around what stands beside them.
constexpr std::array deceptive{CodePoints{0x200B, 0x200F}, CodePoints{0x2028, 0x202E}, CodePoints{0x2066, 0x2069},
                               CodePoints{0xFEFF, 0xFEFF}};
/// Of a sequence that is valid UTF-8.
char32_t codePointOf(std::string_view sequence) noexcept
{
    const auto lead = static_cast<unsigned char>(sequence.front());
    char32_t codePoint = sequence.size() == 1 ? lead : lead & (0x7Fu >> sequence.size());
    for (const char c : sequence.substr(1))
        codePoint = codePoint << 6 | (static_cast<unsigned char>(c) & 0x3Fu);
    return codePoint;
}

/// Length of the UTF-8 sequence that starts the text; 0 for bytes that are none.
std::size_t sequenceLength(std::string_view text) noexcept
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    // Overlong forms, surrogates and what lies beyond Unicode.
    const bool malformed = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) > 0x9F)
        || (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) > 0x8F);
    return malformed ? 0 : length;
}

/// Length of the UTF-8 sequence that starts the text and may be shown as it is; 0 for bytes that need an escape.
std::size_t shownSequence(std::string_view text) noexcept
{
    const std::size_t length = sequenceLength(text);
    const char32_t codePoint = length > 0 ? codePointOf(text.substr(0, length)) : 0;
    const bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
    return isControl || isIn(deceptive, codePoint) ? 0 : length;
}

bool needsEscape(std::string_view text) noexcept
{
    for (; !text.empty(); text.remove_prefix(shownSequence(text)))
        if (shownSequence(text) == 0)
            return true;
    return false;
}

/// Would what follows a backslash make it read as an escape?
bool readsAsEscape(std::string_view rest) noexcept
{
    return !rest.empty()
        && (std::string_view("\\nrtx").find(rest.front()) != std::string_view::npos || shownSequence(rest) == 0);
}

std::string escape(char c)
{
    switch (c) {
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    }
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    return {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
}

std::string escapedShellWord(std::string_view word)
{
    std::string quoted = "$'";
    while (!word.empty()) {
        const std::size_t length = shownSequence(word);
        if (word.front() == '\\' || word.front() == '\'')
            quoted += '\\';
        quoted += length > 0 ? std::string(word.substr(0, length)) : escape(word.front());
        word.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return quoted + '\'';
}

} // namespace

bool isUtf8(std::string_view text) noexcept
{
    while (!text.empty() && sequenceLength(text) > 0)
        text.remove_prefix(sequenceLength(text));
    return text.empty();
}

std::string visible(std::string_view text)
{
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = shownSequence(text);
        if (text.front() == '\\' && readsAsEscape(text.substr(1)))
            shown += '\\';
        shown += length > 0 ? std::string(text.substr(0, length)) : escape(text.front());
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return shown;
}

std::string shellWord(std::string_view word)
{
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=.,:/@%";
    if (!word.empty() && word.find_first_not_of(plain) == std::string_view::npos)
        return std::string(word);
    if (needsEscape(word))
        return escapedShellWord(word);
    std::string quoted = "'";
    for (const char c : word)
        c == '\'' ? quoted += "'\\''" : quoted += c;
    return quoted + '\'';
}

std::string htmlText(std::string_view visibleText)
{
    std::string text;
    for (const char c : visibleText) {
        switch (c) {
        case '&': text += "&amp;"; break;
        case '<': text += "&lt;"; break;
        case '>': text += "&gt;"; break;
        case '"': text += "&quot;"; break;
        case '\'': text += "&#39;"; break;
        default: text += c;
        }
    }
    return text;
}

std::string inQuotes(std::string_view text)
{
    constexpr std::size_t longest = 120;
    const auto insideCharacter = [&](std::size_t i) {
        return i > 0 && i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    };
    std::size_t shown = std::min(longest, text.size());
    while (insideCharacter(shown))
        --shown;
    std::string quoted(1, '\'');
    return quoted.append(visible(text.substr(0, shown))).append(shown < text.size() ? "...'" : "'");
}

std::string bothEnds(std::string_view visibleText, std::size_t most)
{
    std::vector<std::size_t> starts; // of the characters
    for (std::size_t i = 0; i < visibleText.size(); ++i)
        if ((static_cast<unsigned char>(visibleText[i]) & 0xC0) != 0x80)
            starts.push_back(i);
    if (starts.size() <= most)
        return std::string(visibleText);
    const std::size_t front = most / 2;
    const std::size_t back = most - 1 - front;
    return std::string(visibleText.substr(0, starts[front])) + "…"
        + std::string(visibleText.substr(starts[starts.size() - back]));
}

Character firstCharacter(std::string_view visibleText) noexcept
{
    const std::size_t length = std::max<std::size_t>(shownSequence(visibleText), 1);
    return {codePointOf(visibleText.substr(0, length)), length};
}

} // namespace vexroc
