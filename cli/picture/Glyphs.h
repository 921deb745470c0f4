#pragma once

#include "host/CancelFlag.h"

#include <map>
#include <string>
#include <string_view>

namespace vexroc {

/// Which characters the fonts of this machine can show. gnuplot spoils a whole PNG or PDF, by huge shapes across it,
/// with a character that no font has.
class Glyphs {
public:
    /// Of the fonts that fc-list tells of; all characters where it tells nothing.
    static Glyphs installed(VexCommon_920::CancelFlag& cancel);
    /// Of a list as fc-list writes it: lines such as "charset=20-7e a0", hexadecimal.
    static Glyphs listed(std::string_view list);

    /// Visible text with \u{1f642} in the place of a character that no font has.
    [[nodiscard]] std::string shown(std::string_view visibleText) const;

private:
    [[nodiscard]] bool has(char32_t character) const;

    std::map<char32_t, char32_t> ranges_; ///< last character by first; they may overlap
};

} // namespace vexroc
