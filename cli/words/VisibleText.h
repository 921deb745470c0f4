#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexroc {

bool isUtf8(std::string_view text) noexcept;

/// Text for people: control characters, characters that are invisible or turn the direction of others, and bytes that
/// are not UTF-8 become escapes such as \n and \x1b. A backslash is doubled where it would read as one of them, so that
/// different texts stay different.
std::string visible(std::string_view text);

/// A word as a shell reads it back, as visible text: in single quotes where it holds more than letters, digits and a
/// few signs; as $'...', which bash, zsh and POSIX of 2024 know, where it holds what needs an escape.
std::string shellWord(std::string_view word);

/// Text as it stands in a page, also inside a quoted attribute.
std::string htmlText(std::string_view visibleText);

/// visible(text) in single quotes, cut when very long; for messages.
std::string inQuotes(std::string_view text);

/// Visible text of at most `most` characters: a longer one keeps both ends, with … between them.
std::string bothEnds(std::string_view visibleText, std::size_t most);

/// A character of visible text, and how many bytes it takes there.
struct Character {
    char32_t codePoint;
    std::size_t length;
};
/// The first one; the text is not empty.
Character firstCharacter(std::string_view visibleText) noexcept;

} // namespace vexroc
