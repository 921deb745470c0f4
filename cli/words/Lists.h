#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

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
/// The same where the values may be left out, with the equal sign.
Assignment splitColumn(std::string_view text, std::string_view option, std::string_view form);

} // namespace vexroc
