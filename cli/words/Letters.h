#pragma once

#include <string_view>

namespace vexroc {

/// Text without the blanks and tabs at its ends.
std::string_view trimmed(std::string_view text) noexcept;

bool endsWithIgnoringCase(std::string_view text, std::string_view ending) noexcept;

/// ASCII letters only, whatever the locale.
char lowerLetter(char c) noexcept;
bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept;

} // namespace vexroc
