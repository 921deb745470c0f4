#pragma once

#include <string>
#include <string_view>

namespace ROCALG_920::labels {

/// UTF-8 text with Latin, Greek and Cyrillic letters in lower case, whatever the locale; the rest as it is.
std::string foldedCase(std::string_view text);

} // namespace ROCALG_920::labels
