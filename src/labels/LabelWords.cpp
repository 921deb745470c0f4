#include "labels/LabelWords.h"

#include "labels/LetterCase.h"
#include "remarks/typed.h"

#include <algorithm>

namespace ROCALG_920::labels {

namespace {

using Value = LabelColumn::Value;
using remarks::listItem;
using remarks::shellWord;

/// The front of a long text, ending with a whole character.
std::string cutLong(std::string_view text)
{
    constexpr std::size_t longest = 60;
    if (text.size() <= longest)
        return std::string(text);
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return std::string(text.substr(0, end)) + "...";
}

} // namespace

std::string joined(std::span<const std::string> items, std::string_view between, std::size_t most)
{
    std::string text;
    for (const std::string& item : items.first(std::min(items.size(), most)))
        text.append(text.empty() ? "" : between).append(item);
    return items.size() > most ? text + " and " + std::to_string(items.size() - most) + " more" : text;
}

std::string looks(std::string_view text)
{
    constexpr std::string_view hardBlank = "\xC2\xA0";
    for (std::string_view before; before != text;) {
        before = text;
        text = trimmed(text);
        if (text.starts_with(hardBlank))
            text.remove_prefix(hardBlank.size());
        if (text.ends_with(hardBlank))
            text.remove_suffix(hardBlank.size());
    }
    return foldedCase(text);
}

std::string LabelWords::quoted(std::string_view text) const
{
    const char mark = voice_ == VEXROC_VOICE_PROGRAM ? '\'' : '"';
    return mark + cutLong(text) + mark;
}

std::string LabelWords::where() const { return "column " + quoted(column_.name()); }

std::string LabelWords::listed(std::vector<Value> values) const
{
    return commonest(std::move(values), [](const std::string& text, long long count) {
        return text + " (" + std::to_string(count) + ')';
    });
}

std::string LabelWords::inBrackets(std::vector<Value> values) const
{
    return commonest(std::move(values),
                     [](const std::string& text, long long count) { return text + ": " + std::to_string(count); });
}

std::string LabelWords::commonest(std::vector<Value> values, Item item) const
{
    constexpr std::size_t most = 20;
    std::ranges::stable_sort(values, std::greater{}, &Value::count);
    std::vector<std::string> items;
    for (const Value& value : values)
        items.push_back(item(quoted(column_.spellingOf(value).text), value.count));
    return joined(items, ", ", most);
}

std::string LabelWords::neverHolds(std::string_view name) const
{
    return where() + " never holds " + quoted(name) + "; it holds " + listed(column_.values());
}

std::string LabelWords::namedTwice(std::string_view first, std::string_view second, bool onBothSides) const
{
    const std::string both = quoted(first) + " and " + quoted(second) + " are one value of " + where();
    return both + (onBothSides ? ", which cannot be positive and negative" : "; name it once");
}

std::string LabelWords::statesNotSaid(const std::vector<std::string>& positive) const
{
    const std::array<std::string, 2> ways = waysOn(positive);
    return where() + " holds " + listed(column_.values()) + ", and which are "
        + (positive.empty() ? "positive" : "negative") + " is not said; say " + ways[0] + " or " + ways[1];
}

std::array<std::string, 2> LabelWords::waysOn(const std::vector<std::string>& named) const
{
    const std::vector<std::string> positive = named.empty() ? std::vector<std::string>{likelyPositive()} : named;
    const std::string negative = likelyNegative(positive);
    const std::string given = asArgument(positive);
    const std::string rest = asArgument({negative});
    switch (voice_) {
    case VEXROC_VOICE_PROGRAM: {
        const std::string state = "--state " + shellWord(listItem(column_.name()) + '=' + given) + " --negative ";
        return {state + shellWord(rest), state + "others"};
    }
    case VEXROC_VOICE_PYTHON:
        return {"pos_label=" + given + ", neg_label=" + rest, "pos_label=" + given + ", neg_label=vexroc.OTHERS"};
    case VEXROC_VOICE_R:
        return {"positive = " + given + ", negative = " + rest, "positive = " + given + ", negative = others()"};
    case VEXROC_VOICE_C: break;
    }
    return {"positive = {" + given + "}, negative = {" + rest + '}', "positive = {" + given + "}, others = 1"};
}

/// Is it written without quotation marks in a language that tells numbers and texts apart?
bool LabelWords::isPlain(std::string_view text) const
{
    const int value = column_.find(text);
    if (value == LabelColumn::missing || voice_ == VEXROC_VOICE_C)
        return false;
    const LabelColumn::Spelling& spelling = column_.spellingOf(column_.values()[static_cast<std::size_t>(value)]);
    return spelling.number || spelling.kind == TextKind::value;
}

std::string LabelWords::asArgument(const std::vector<std::string>& texts) const
{
    std::vector<std::string> items;
    for (const std::string& text : texts)
        items.push_back(voice_ == VEXROC_VOICE_PROGRAM ? listItem(text)
                            : isPlain(text)            ? text
                                                       : remarks::stringLiteral(text));
    std::string list = joined(items, voice_ == VEXROC_VOICE_PROGRAM ? "," : ", ", items.size());
    if (items.size() < 2 || voice_ == VEXROC_VOICE_PROGRAM || voice_ == VEXROC_VOICE_C)
        return list;
    return voice_ == VEXROC_VOICE_R ? "c(" + list + ')' : '[' + list + ']';
}

/// The later of the two commonest values: a rare one may be a code for something else.
std::string LabelWords::likelyPositive() const
{
    std::vector<Value> values = column_.values();
    std::ranges::stable_sort(values, std::greater{}, &Value::count);
    const Value& second = values[std::min<std::size_t>(1, values.size() - 1)];
    const auto isCommon = [&](const Value& v) { return v.first == values.front().first || v.first == second.first; };
    const auto last = std::ranges::find_if(column_.values().rbegin(), column_.values().rend(), isCommon);
    return column_.spellingOf(*last).text;
}

/// The commonest of the other values; one that only looks like a positive one last of all.
std::string LabelWords::likelyNegative(const std::vector<std::string>& positive) const
{
    std::string likely;
    long long most = -1;
    for (std::size_t v = 0; v < column_.values().size(); ++v) {
        const Value& value = column_.values()[v];
        const std::string& text = column_.spellingOf(value).text;
        const auto is = [&](const std::string& name) { return column_.find(name) == static_cast<int>(v); };
        const auto looksLike = [&](const std::string& name) { return looks(name) == looks(text); };
        const long long weight = std::ranges::any_of(positive, looksLike) ? 0 : value.count;
        if (std::ranges::none_of(positive, is) && weight > most) {
            most = weight;
            likely = text;
        }
    }
    return likely;
}

} // namespace ROCALG_920::labels
