#pragma once

#include <string_view>

namespace vexroc {

/// A script or style of the report page, with the SHA-256 of its bytes in hexadecimal digits.
struct PagePart {
    std::string_view text;
    std::string_view hash;
};
extern const PagePart pageScript;
extern const PagePart pageStyle;

} // namespace vexroc
