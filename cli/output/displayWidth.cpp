#include "cli/output/TableForms.h"
#include "cli/words/VisibleText.h"

#include <utf8proc.h>

namespace vexroc {

// In a file of its own: where there is no utf8proc, another takes its place.
std::size_t displayWidth(std::string_view visibleText) noexcept
{
    std::size_t width = 0;
    while (!visibleText.empty()) {
        const auto [codePoint, length] = firstCharacter(visibleText);
        width += codePoint < 0x80 ? 1 : static_cast<std::size_t>(utf8proc_charwidth(static_cast<int>(codePoint)));
        visibleText.remove_prefix(length);
    }
    return width;
}

} // namespace vexroc
