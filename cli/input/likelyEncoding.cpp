#include "cli/input/likelyEncoding.h"

#include "cli/words/Letters.h"

#include <algorithm>

namespace vexroc {

namespace {

bool isLetter(char c) noexcept { return lowerLetter(c) >= 'a' && lowerLetter(c) <= 'z'; }

bool isHigh(char c) noexcept { return static_cast<unsigned char>(c) >= 0x80; }

/// The bytes from the first one above ASCII to the next one within it.
std::string_view firstHighRun(std::string_view word) noexcept
{
    const auto begin = std::ranges::find_if(word, isHigh);
    return {begin, std::find_if_not(begin, word.end(), isHigh)};
}

bool startsWithAnyOf(std::string_view text, std::string_view bytes) noexcept
{
    return !text.empty() && bytes.find(text.front()) != std::string_view::npos;
}

} // namespace

std::string likelyEncoding(std::string_view word)
{
    // A letter with a mark stands alone among others: in Windows from C0 up, in DOS where Windows has signs that do not
    // stand in words.
    const std::string_view run = firstHighRun(word);
    const bool behindLetter = run.data() != word.data() && isLetter(*(run.data() - 1));
    if (std::ranges::count(word, '\x83') > 1 || (run.size() > 1 && run.front() == '\x82'))
        return "SHIFT_JIS"; // the kana
    if (run.size() == 1)
        return behindLetter && startsWithAnyOf(run, "\x81\x82\x84\x87\x88\x94\xA0\xA1\xA2\xA3\xA4") ? "cp850"
                                                                                                    : "windows-1252";
    const auto byte = [](char c) { return static_cast<unsigned char>(c); };
    const auto isCyrillic = [&](char c) { return byte(c) >= 0xC0 || byte(c) == 0xA8 || byte(c) == 0xB8; };
    if (!std::ranges::all_of(run, isCyrillic))
        return "GB18030";
    if (std::ranges::any_of(word, isLetter)) // beside which two letters with marks may stand
        return "windows-1252";
    // Cyrillic words are of letters from C0 up. Small ones are the rest behind the first: above E0 in Windows.
    const auto isSmall = [&](char c) { return byte(c) >= 0xE0; };
    const auto small = std::ranges::count_if(run.substr(1), isSmall);
    return 2 * static_cast<std::size_t>(small) >= run.size() - 1 ? "windows-1251" : "KOI8-R";
}

} // namespace vexroc
