#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vexroc {

/// What stands in front of a text's rows, and how the text is written.
struct TextFront {
    std::size_t length = 0;        ///< of a byte order mark and a line "sep=;", which are no rows
    std::size_t firstLine = 1;     ///< that of the first row
    std::optional<char> delimiter; ///< that of such a line
    std::string_view header;       ///< the first line that is not blank, with its line end and blank lines before it
    bool isComplete = false;       ///< is the header all there?

    /// The front of text that begins so.
    static TextFront of(std::string_view text);
    /// The delimiter of the line "sep=;", else whichever of comma, tab and semicolon is most frequent in the header
    /// outside quotes.
    [[nodiscard]] char likelyDelimiter() const;
};

/// Throws an input error for what is known by its first bytes as something other than text.
void requireText(const std::string& name, std::string_view front);

} // namespace vexroc
