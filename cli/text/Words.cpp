#include "cli/text/Words.h"

#include "cli/Failure.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vexroc {

namespace {

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept
{
    return std::ranges::equal(a, b, {}, lower, lower);
}

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
/// The large blocks of characters that terminals show two places wide.
constexpr std::array wide{CodePoints{0x1100, 0x115F},   CodePoints{0x2E80, 0x303E},   CodePoints{0x3041, 0xA4CF},
                          CodePoints{0xA960, 0xA97C},   CodePoints{0xAC00, 0xD7A3},   CodePoints{0xF900, 0xFAFF},
                          CodePoints{0xFE30, 0xFE6F},   CodePoints{0xFF01, 0xFF60},   CodePoints{0xFFE0, 0xFFE6},
                          CodePoints{0x1F300, 0x1F64F}, CodePoints{0x1F680, 0x1F6FF}, CodePoints{0x1F900, 0x1F9FF},
                          CodePoints{0x20000, 0x3FFFD}};
constexpr std::array combining{CodePoints{0x0300, 0x036F}, CodePoints{0x1AB0, 0x1AFF}, CodePoints{0x1DC0, 0x1DFF},
                               CodePoints{0x20D0, 0x20FF}, CodePoints{0x3099, 0x309A}, CodePoints{0xFE00, 0xFE0F},
                               CodePoints{0xFE20, 0xFE2F}};

/// Of a sequence that is valid UTF-8.
char32_t codePointOf(std::string_view sequence) noexcept
{
    const auto lead = static_cast<unsigned char>(sequence.front());
    char32_t codePoint = sequence.size() == 1 ? lead : lead & (0x7Fu >> sequence.size());
    for (const char c : sequence.substr(1))
        codePoint = codePoint << 6 | (static_cast<unsigned char>(c) & 0x3Fu);
    return codePoint;
}

/// Length of the UTF-8 sequence that starts the text and may be shown as it is; 0 for bytes that need an escape.
std::size_t shownSequence(std::string_view text) noexcept
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return lead >= 0x20 && lead != 0x7F ? 1 : 0;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    // Overlong forms, surrogates and what lies beyond Unicode; then the control characters U+0080 to U+009F.
    const bool malformed = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) > 0x9F)
        || (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) > 0x8F);
    const bool hidden = malformed || (lead == 0xC2 && byte(1) < 0xA0)
        || isIn(deceptive, codePointOf(text.substr(0, length)));
    return hidden ? 0 : length;
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
    return !rest.empty() && (std::string_view("\\nrtx").find(rest.front()) != std::string_view::npos
                             || shownSequence(rest) == 0);
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
    return lower(text.back()) == 'f' || lower(text.back()) == 'y';
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

/// The text inside the double quotes that text starts with; text then starts behind the closing quote.
std::string takeQuoted(std::string_view& text, std::string_view option)
{
    std::string item;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != '"') {
            item += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == '"') {
            item += text[i++];
        } else {
            text.remove_prefix(i + 1);
            return item;
        }
    }
    throw usageError(std::string(option) + ": a double quote is not closed");
}

/// The item before the separator; text then starts at the separator, or is empty.
std::string takeItem(std::string_view& text, char separator, std::string_view option)
{
    text = trimmed(text);
    if (text.empty() || text.front() != '"') {
        const std::string_view item = text.substr(0, text.find(separator));
        text.remove_prefix(item.size());
        return std::string(trimmed(item));
    }
    std::string item = takeQuoted(text, option);
    text = trimmed(text);
    if (!text.empty() && text.front() != separator)
        throw usageError(std::string(option) + ": text follows a closing double quote");
    return item;
}

/// Letters to replace, insert, drop or swap with their neighbour, letter case aside.
std::size_t editDistance(std::string_view a, std::string_view b)
{
    const std::size_t width = b.size() + 1;
    std::vector<std::size_t> distance((a.size() + 1) * width);
    const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& { return distance[i * width + j]; };
    const auto same = [&](std::size_t i, std::size_t j) { return lower(a[i - 1]) == lower(b[j - 1]); };
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                at(i, j) = i + j;
                continue;
            }
            at(i, j) = std::min({at(i - 1, j - 1) + (same(i, j) ? 0 : 1), at(i - 1, j) + 1, at(i, j - 1) + 1});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
        }
    }
    return distance.back();
}

} // namespace

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

bool isMissingWord(std::string_view cell) noexcept
{
    std::string_view word = trimmed(cell);
    if (word.empty() || word == "." || equalIgnoringCase(word, "na"))
        return true;
    if (word.front() == '-' || word.front() == '+')
        word.remove_prefix(1);
    return equalIgnoringCase(word, "nan");
}

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

std::size_t displayWidth(std::string_view visibleText) noexcept
{
    std::size_t width = 0;
    while (!visibleText.empty()) {
        const auto [codePoint, length] = firstCharacter(visibleText);
        width += isIn(wide, codePoint) ? 2 : isIn(combining, codePoint) ? 0 : 1;
        visibleText.remove_prefix(length);
    }
    return width;
}

std::string listed(std::span<const std::string> words, std::size_t most)
{
    std::string list;
    for (const std::string& word : words.first(std::min(most, words.size())))
        list += (list.empty() ? "" : ", ") + inQuotes(word);
    if (words.size() > most)
        list += " and " + std::to_string(words.size() - most) + " more";
    return list;
}

std::vector<std::string> splitList(std::string_view text, std::string_view option)
{
    std::vector<std::string> items;
    for (;;) {
        items.push_back(takeItem(text, ',', option));
        if (items.back().empty())
            throw usageError(std::string(option) + ": an item of the list is empty");
        if (text.empty())
            return items;
        text.remove_prefix(1);
    }
}

Assignment splitAssignment(std::string_view text, std::string_view option, std::string_view form)
{
    std::string_view rest = text;
    std::string column = takeItem(rest, '=', option);
    if (!rest.empty())
        rest.remove_prefix(1);
    rest = trimmed(rest);
    if (column.empty() || rest.empty())
        throw usageError(std::string(option).append(" ").append(inQuotes(text)).append(": expected ").append(form));
    return {std::move(column), rest};
}

std::vector<std::string> nearWords(std::string_view word, std::span<const std::string> candidates)
{
    struct Near {
        std::size_t distance;
        std::string_view word;
    };
    constexpr std::size_t longestWord = 200; // nobody mistypes longer ones
    const std::size_t farthest = std::max<std::size_t>(1, word.size() / 3);
    std::vector<Near> near;
    for (const std::string& candidate : candidates) {
        const std::size_t shorter = std::min(word.size(), candidate.size());
        if (candidate == word || std::max(word.size(), candidate.size()) > longestWord)
            continue;
        if (const std::size_t distance = editDistance(word, candidate); distance <= farthest && distance < shorter)
            near.push_back({distance, candidate});
    }
    std::ranges::stable_sort(near, {}, &Near::distance);
    std::vector<std::string> words;
    for (const Near& each : near)
        if (words.size() < 3 && std::ranges::find(words, each.word) == words.end())
            words.emplace_back(each.word);
    return words;
}

std::string didYouMean(std::string_view word, std::span<const std::string> candidates)
{
    const std::vector<std::string> near = nearWords(word, candidates);
    return near.empty() ? "" : "; did you mean " + listed(near, near.size()) + "?";
}

} // namespace vexroc
