#include "labels/LabelColumn.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace ROCALG_920::labels {

namespace {

using Spelling = LabelColumn::Spelling;

/// Ascending: numbers, then texts byte by byte.
bool isBefore(const Spelling& a, const Spelling& b)
{
    if (a.number && b.number)
        return *a.number < *b.number;
    if (a.number || b.number)
        return a.number.has_value();
    return std::tie(a.text, a.kind) < std::tie(b.text, b.kind);
}

} // namespace

int LabelColumn::add(std::string_view text, TextKind kind, long long count)
{
    Index& index = indexes_[static_cast<std::size_t>(kind)];
    auto place = index.find(text);
    if (place == index.end()) {
        place = index.emplace(text, static_cast<int>(spellings_.size())).first;
        spellings_.push_back({std::string(text), kind});
    }
    spellings_[static_cast<std::size_t>(place->second)].count += count;
    return place->second;
}

void LabelColumn::settle()
{
    std::vector<int> present;
    for (std::size_t s = 0; s < spellings_.size(); ++s) {
        Spelling& spelling = spellings_[s];
        spelling.value = missing;
        if (spelling.kind == TextKind::text)
            spelling.number = Decimal::of(spelling.text, decimalSign_);
        if (!isMissingWord(spelling))
            present.push_back(static_cast<int>(s));
    }
    arrange(std::move(present));
    makeDoubtfulWordsMissing();
}

bool LabelColumn::isNamed(const Spelling& spelling) const
{
    return std::ranges::any_of(named_, [&](const std::string& name) {
        return lowerCase(trimmed(name)) == lowerCase(trimmed(spelling.text))
            || (spelling.number && spelling.number == Decimal::of(name, decimalSign_));
    });
}

bool LabelColumn::isMissingWord(const Spelling& spelling) const
{
    return spelling.kind == TextKind::text && words_.isMissingLabel(spelling.text) && !isNamed(spelling);
}

void LabelColumn::makeDoubtfulWordsMissing()
{
    constexpr int enough = 2;
    const auto isText = [](const Spelling& spelling, std::string_view text) { return trimmed(spelling.text) == text; };
    const bool hasPlus =
        std::ranges::any_of(values_, [&](const Value& value) { return isText(spellingOf(value), "+"); });
    const auto isDoubtful = [&](const Spelling& spelling) {
        return spelling.kind == TextKind::text && words_.isDoubtfulLabel(spelling.text) && !isNamed(spelling)
            && !(hasPlus && isText(spelling, "-"));
    };
    const auto doubtful =
        std::ranges::count_if(values_, [&](const Value& value) { return isDoubtful(spellingOf(value)); });
    if (doubtful == 0 || std::ssize(values_) - doubtful < enough)
        return;
    std::vector<int> present;
    for (std::size_t s = 0; s < spellings_.size(); ++s)
        if (Spelling& spelling = spellings_[s]; spelling.value != missing) {
            spelling.value = missing;
            if (!isDoubtful(spelling))
                present.push_back(static_cast<int>(s));
        }
    arrange(std::move(present));
}

void LabelColumn::arrange(std::vector<int> present)
{
    const auto spelling = [this](int index) -> Spelling& { return spellings_[static_cast<std::size_t>(index)]; };
    std::ranges::stable_sort(present, [&](int a, int b) { return isBefore(spelling(a), spelling(b)); });
    values_.clear();
    for (const int next : present) {
        if (values_.empty() || isBefore(spelling(values_.back().first), spelling(next)))
            values_.push_back({next, 0});
        values_.back().count += spelling(next).count;
        spelling(next).value = static_cast<int>(values_.size()) - 1;
    }
}

int LabelColumn::find(std::string_view text) const
{
    const Spelling asText{std::string(text), TextKind::text, 0, Decimal::of(text, decimalSign_)};
    const Spelling asValue{asText.text, TextKind::value};
    for (const Spelling* const named : {&asText, &asValue}) {
        const auto atOrBehind = std::ranges::lower_bound(
            values_, *named, isBefore, [this](const Value& v) -> const Spelling& { return spellingOf(v); });
        if (atOrBehind != values_.end() && !isBefore(*named, spellingOf(*atOrBehind)))
            return static_cast<int>(atOrBehind - values_.begin());
    }
    return missing;
}

bool LabelColumn::holdsAsMissing(std::string_view text) const
{
    const std::optional<Decimal> number = Decimal::of(text, decimalSign_);
    return std::ranges::any_of(spellings_, [&](const Spelling& spelling) {
        return spelling.value == missing && (spelling.text == text || (number && spelling.number == number));
    });
}

} // namespace ROCALG_920::labels
