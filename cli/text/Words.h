#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// Text without the blanks and tabs at its ends.
std::string_view trimmed(std::string_view text) noexcept;

bool endsWithIgnoringCase(std::string_view text, std::string_view ending) noexcept;

/// Is the cell one of the words for a missing value: empty, ".", NA or NaN? Letter case, the sign of NaN and blanks
/// around the word do not count.
bool isMissingWord(std::string_view cell) noexcept;

/// The number that the whole text spells, blanks around it aside: decimal or scientific with that decimal sign, or an
/// infinity in words. Nothing for other text, and for finite spellings beyond the range of a double.
std::optional<double> parseNumber(std::string_view text, char decimal = '.') noexcept;

/// Does the text spell a finite number that a double cannot hold?
bool isBeyondDouble(std::string_view text, char decimal = '.') noexcept;

/// The shortest digits that read back as the same double; "NA" for NaN, "inf" and "-inf" for the infinities.
std::string shortest(double value);

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

/// How many places visible text takes in a line of a terminal: two for a wide character, none for a combining one.
std::size_t displayWidth(std::string_view visibleText) noexcept;

/// "a", "b" and "c" as 'a', 'b', 'c'; at most `most` of them, then how many more there are.
std::string listed(std::span<const std::string> words, std::size_t most);

/// Items between commas. An item in double quotes may hold commas, and quotes doubled. `option` names the culprit in
/// the usage error for an empty item or an open quote.
std::vector<std::string> splitList(std::string_view text, std::string_view option);

/// A column name and the values after the first "=" outside quotes. `form` is what is expected, for the usage error.
struct Assignment {
    std::string column;
    std::string_view values; ///< not yet taken apart; points into the text given
};
Assignment splitAssignment(std::string_view text, std::string_view option, std::string_view form);

/// The candidates that differ from word by letter case or by a few of its letters, best first, at most three.
std::vector<std::string> nearWords(std::string_view word, std::span<const std::string> candidates);

/// "; did you mean 'auc'?" with the nearWords; empty when there are none.
std::string didYouMean(std::string_view word, std::span<const std::string> candidates);

} // namespace vexroc
