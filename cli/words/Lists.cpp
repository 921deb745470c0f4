#include "cli/words/Lists.h"

#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
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
ListItem takeItem(std::string_view& text, char separator, std::string_view option)
{
    text = trimmed(text);
    if (text.empty() || text.front() != '"') {
        const std::string_view item = text.substr(0, text.find(separator));
        text.remove_prefix(item.size());
        return {std::string(trimmed(item)), false};
    }
    ListItem item{takeQuoted(text, option), true};
    text = trimmed(text);
    if (!text.empty() && text.front() != separator)
        throw usageError(std::string(option) + ": text follows a closing double quote");
    return item;
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
    std::vector<std::string> texts;
    for (ListItem& item : splitItems(text, option))
        texts.push_back(std::move(item.text));
    return texts;
}

std::vector<ListItem> splitItems(std::string_view text, std::string_view option)
{
    std::vector<ListItem> items;
    for (;;) {
        items.push_back(takeItem(text, ',', option));
        if (items.back().text.empty())
            throw usageError(std::string(option) + ": an item of the list is empty");
        if (text.empty())
            return items;
        text.remove_prefix(1);
    }
}

Assignment splitColumn(std::string_view text, std::string_view option)
{
    std::string column = takeItem(text, '=', option).text;
    if (!text.empty())
        text.remove_prefix(1);
    return {std::move(column), trimmed(text)};
}

Assignment splitAssignment(std::string_view text, std::string_view option, std::string_view form)
{
    Assignment assignment = splitColumn(text, option);
    if (assignment.column.empty() || assignment.values.empty())
        throw usageError(std::string(option).append(" ").append(inQuotes(text)).append(": expected ").append(form));
    return assignment;
}

std::optional<CutText> splitCut(std::string_view text, std::string_view option)
{
    constexpr std::string_view signs = "<>";
    CutText cut;
    text = trimmed(text);
    const std::size_t equal = text.find('=');
    if (text.starts_with('"')) {
        cut.column = takeQuoted(text, option);
        cut.isAssignment = false;
        text = trimmed(text);
    } else {
        cut.isAssignment = equal != std::string_view::npos;
        const std::size_t sign = !cut.isAssignment ? text.find_last_of(signs) : equal > 0 ? equal - 1 : 0;
        cut.column = trimmed(text.substr(0, sign));
        text.remove_prefix(std::min(sign, text.size()));
    }
    if (cut.column.empty() || text.empty() || signs.find(text.front()) == std::string_view::npos)
        return std::nullopt;
    const std::size_t length = text.substr(1).starts_with('=') ? 2 : 1;
    cut.sign = text.substr(0, length);
    cut.bound = trimmed(text.substr(length));
    const bool isNumber = parseNumber(cut.bound) || parseNumber(cut.bound, ',');
    return isNumber ? std::optional(std::move(cut)) : std::nullopt;
}

} // namespace vexroc
