#include "cli/picture/Glyphs.h"

#include "cli/system/ChildProcess.h"
#include "cli/words/Lists.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace vexroc {

namespace {

std::string hexadecimal(char32_t character)
{
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), std::uint32_t{character}, 16).ptr;
    return {digits.data(), end};
}

} // namespace

Glyphs Glyphs::installed(VexCommon_920::CancelFlag& cancel)
{
    constexpr std::chrono::seconds limit{20};
    const std::optional<std::string> program = findProgram("fc-list");
    if (!program)
        return {};
    const TemporaryFolder folder;
    const ChildEnd end = runChild(*program, {"fc-list", ":", "charset"}, folder.path(), limit, cancel);
    return end.inTime && end.status == 0 ? listed(end.said) : Glyphs{};
}

Glyphs Glyphs::listed(std::string_view list)
{
    Glyphs glyphs;
    const char* const end = list.data() + list.size();
    for (std::size_t line = list.find("charset="); line != std::string_view::npos; line = list.find("charset=", line)) {
        line += std::string_view("charset=").size();
        for (const char* next = list.data() + line; next < end && *next != '\n' && *next != ':';) {
            std::uint32_t first = 0;
            const auto [stop, error] = std::from_chars(next, end, first, 16);
            if (error != std::errc()) {
                ++next;
                continue;
            }
            std::uint32_t last = first;
            next = stop;
            if (next < end && *next == '-')
                next = std::from_chars(next + 1, end, last, 16).ptr;
            char32_t& known = glyphs.ranges_[first];
            known = std::max<char32_t>(known, last);
        }
    }
    return glyphs;
}

bool Glyphs::has(char32_t character) const
{
    const auto end = ranges_.upper_bound(character);
    return character < 0x80 || ranges_.empty()
        || std::any_of(ranges_.begin(), end, [&](const auto& range) { return range.second >= character; });
}

std::string Glyphs::shown(std::string_view visibleText) const
{
    std::string text;
    while (!visibleText.empty()) {
        const auto [character, length] = firstCharacter(visibleText);
        text += has(character) ? std::string(visibleText.substr(0, length)) : "\\u{" + hexadecimal(character) + "}";
        visibleText.remove_prefix(length);
    }
    return text;
}

} // namespace vexroc
