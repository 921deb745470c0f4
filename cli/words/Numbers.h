#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexroc {

/// The number that the whole text spells, blanks around it aside: decimal or scientific with that decimal sign, or an
/// infinity in words. Nothing for other text, and for finite spellings beyond the range of a double.
std::optional<double> parseNumber(std::string_view text, char decimal = '.') noexcept;

/// Does the text spell a finite number that a double cannot hold?
bool isBeyondDouble(std::string_view text, char decimal = '.') noexcept;

/// The shortest digits that read back as the same double; "NA" for NaN, "inf" and "-inf" for the infinities.
std::string shortest(double value);

} // namespace vexroc
