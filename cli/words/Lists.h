#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// "a", "b" and "c" as 'a', 'b', 'c'; at most `most` of them, then how many more there are.
std::string listed(std::span<const std::string> words, std::size_t most);

/// An item of a list.
struct ListItem {
    std::string text;
    bool isQuoted;

    /// Does it say the word itself? In quotes it is a text like any other.
    [[nodiscard]] bool isWord(std::string_view word) const noexcept { return !isQuoted && text == word; }
};

/// Items between commas. An item in double quotes may hold commas, and quotes doubled. `option` names the culprit in
/// the usage error for an empty item or an open quote.
std::vector<ListItem> splitItems(std::string_view text, std::string_view option);
/// Their texts alone.
std::vector<std::string> splitList(std::string_view text, std::string_view option);

/// A column name and the values after the first "=" outside quotes. `form` is what is expected, for the usage error.
struct Assignment {
    std::string column;
    std::string_view values; ///< not yet taken apart; points into the text given
};
Assignment splitAssignment(std::string_view text, std::string_view option, std::string_view form);
/// The same where the values may be left out with their "=".
Assignment splitColumn(std::string_view text, std::string_view option);

/// "grade>=3" as a column and a side of a number. The text may be an assignment as well, to a column "grade>".
struct CutText {
    std::string column;
    std::string sign;  ///< ">=", ">", "<=" or "<"
    std::string bound; ///< spells a number
    bool isAssignment; ///< may it be one?
};
/// Nothing for a text that is none.
std::optional<CutText> splitCut(std::string_view text, std::string_view option);

} // namespace vexroc
