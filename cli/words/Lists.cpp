#include "cli/words/Lists.h"

#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <utility>

namespace vexroc {

namespace {

/// The text inside the double quotes that text starts with; text then starts behind the closing quote.
std::string takeQuoted(std::string_view& text, std::string_view option)
{
    std::string item;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != '"') {
            item += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == '"') {
            item += text[i++];
        } else {
            text.remove_prefix(i + 1);
            return item;
        }
    }
    throw usageError(std::string(option) + ": a double quote is not closed");
}

/// The item before the separator; text then starts at the separator, or is empty.
std::string takeItem(std::string_view& text, char separator, std::string_view option)
{
    text = trimmed(text);
    if (text.empty() || text.front() != '"') {
        const std::string_view item = text.substr(0, text.find(separator));
        text.remove_prefix(item.size());
        return std::string(trimmed(item));
    }
    std::string item = takeQuoted(text, option);
    text = trimmed(text);
    if (!text.empty() && text.front() != separator)
        throw usageError(std::string(option) + ": text follows a closing double quote");
    return item;
}

Failure unexpected(std::string_view text, std::string_view option, std::string_view form)
{
    return usageError(std::string(option).append(" ").append(inQuotes(text)).append(": expected ").append(form));
}

} // namespace

std::string listed(std::span<const std::string> words, std::size_t most)
{
    std::string list;
    for (const std::string& word : words.first(std::min(most, words.size())))
        list += (list.empty() ? "" : ", ") + inQuotes(word);
    if (words.size() > most)
        list += " and " + std::to_string(words.size() - most) + " more";
    return list;
}

std::vector<std::string> splitList(std::string_view text, std::string_view option)
{
    std::vector<std::string> items;
    for (;;) {
        items.push_back(takeItem(text, ',', option));
        if (items.back().empty())
            throw usageError(std::string(option) + ": an item of the list is empty");
        if (text.empty())
            return items;
        text.remove_prefix(1);
    }
}

Assignment splitAssignment(std::string_view text, std::string_view option, std::string_view form)
{
    Assignment assignment = splitColumn(text, option, form);
    if (assignment.values.empty())
        throw unexpected(text, option, form);
    return assignment;
}

Assignment splitColumn(std::string_view text, std::string_view option, std::string_view form)
{
    std::string_view rest = text;
    std::string column = takeItem(rest, '=', option);
    const bool assigns = !rest.empty();
    if (assigns)
        rest.remove_prefix(1);
    rest = trimmed(rest);
    if (column.empty() || (assigns && rest.empty()))
        throw unexpected(text, option, form);
    return {std::move(column), rest};
}

} // namespace vexroc
