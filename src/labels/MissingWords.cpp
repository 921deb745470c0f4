#include "labels/MissingWords.h"

#include <algorithm>

namespace ROCALG_920::labels {

namespace {

char lowerLetter(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool holds(const std::vector<std::string>& lowerWords, std::string_view text)
{
    return std::ranges::any_of(
        lowerWords, [&](const std::string& word) { return std::ranges::equal(word, text, {}, {}, lowerLetter); });
}

/// NaN as numbers are printed: it may have a sign.
std::string_view withoutSign(std::string_view text)
{
    const bool isSigned = text.size() > 1 && (text.front() == '-' || text.front() == '+');
    return isSigned && lowerCase(text.substr(1)) == "nan" ? text.substr(1) : text;
}

} // namespace

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), lowerLetter);
    return lower;
}

void MissingWords::clear()
{
    words_.clear();
    doubtful_.clear();
    numbers_.clear();
}

void MissingWords::add(std::string_view word)
{
    words_.push_back(lowerCase(trimmed(word)));
    std::erase(doubtful_, words_.back());
    if (std::optional<Decimal> number = Decimal::of(word, '.'))
        numbers_.push_back(std::move(*number));
}

bool MissingWords::isMissingInTest(std::string_view text) const
{
    return isMissingLabel(withoutSign(trimmed(text))) || isDoubtfulLabel(text);
}

bool MissingWords::isMissingLabel(std::string_view text) const
{
    const std::string_view word = trimmed(text);
    return word.empty() || holds(words_, word) || isNumber(word);
}

bool MissingWords::isDoubtfulLabel(std::string_view text) const { return holds(doubtful_, trimmed(text)); }

bool MissingWords::isNumber(std::string_view text) const
{
    if (numbers_.empty())
        return false;
    const std::optional<Decimal> number = Decimal::of(text, '.');
    return number && std::ranges::find(numbers_, *number) != numbers_.end();
}

} // namespace ROCALG_920::labels
