#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexroc {

/// The number that the whole text spells, blanks around it aside: decimal or scientific with that decimal sign, or an
/// infinity in words. Nothing for other text, and for finite spellings beyond the range of a double.
std::optional<double> parseNumber(std::string_view text, char decimal = '.') noexcept;

/// What may stand between the thousands of a number.
enum class Thousands : char { notSaid = '\0', none = '0', comma = ',', point = '.', blank = ' ', apostrophe = '\'' };

/// How numbers are written in text.
struct NumberForm {
    char decimal = '.';
    Thousands thousands = Thousands::notSaid;
};
std::optional<double> parseNumber(std::string_view text, const NumberForm& form);

/// A text that looks like a number with its whole part in groups of three digits.
struct GroupedNumber {
    std::string plain; ///< the same without the signs between the groups
    int signs = 0;     ///< between groups: at least one
    bool endsThere = false;

    /// Could the one sign just as well be a decimal sign?
    [[nodiscard]] bool isDoubtful() const noexcept { return signs == 1 && endsThere; }
};
/// Nothing where a group has not three digits, or the first none, a zero in front or more than three. A blank may be
/// one that does not break, an apostrophe a curved one.
std::optional<GroupedNumber> groupedNumber(std::string_view text, Thousands sign);

/// Does the text spell a finite number that a double cannot hold?
bool isBeyondDouble(std::string_view text, char decimal = '.') noexcept;

/// The shortest digits that read back as the same double; "NA" for NaN, "inf" and "-inf" for the infinities.
std::string shortest(double value);

} // namespace vexroc
