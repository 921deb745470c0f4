#include "labels/States.h"

#include "labels/LabelWords.h"

#include <algorithm>
#include <functional>

namespace ROCALG_920::labels {

namespace {

using Value = LabelColumn::Value;

/// The side of the bound on which numbers are positive.
std::function<bool(const Decimal&)> isPositiveOf(const StateChoice::Cut& cut, char decimalSign)
{
    std::optional<Decimal> bound = Decimal::of(cut.bound, decimalSign);
    if (!bound)
        bound = Decimal::of(cut.bound, '.'); // a number that cannot be meant otherwise
    if (!bound)
        throw UnfitChoice("a column is cut at a number, and \"" + cut.bound + "\" is none");
    if (cut.sign == ">=")
        return [b = *bound](const Decimal& number) { return number >= b; };
    if (cut.sign == ">")
        return [b = *bound](const Decimal& number) { return number > b; };
    if (cut.sign == "<=")
        return [b = *bound](const Decimal& number) { return number <= b; };
    if (cut.sign == "<")
        return [b = *bound](const Decimal& number) { return number < b; };
    throw UnfitChoice("there is no sign \"" + cut.sign + "\"; a column is cut with >=, >, <= or <");
}

std::vector<State> cutStates(const LabelColumn& column, const StateChoice& choice, const LabelWords& words)
{
    if (!choice.positive.empty() || !choice.negative.empty() || choice.others)
        throw UnfitChoice("a cut of a number line says both states: no positive or negative values go with it");
    const auto isPositive = isPositiveOf(*choice.cut, column.decimalSign());
    std::vector<State> states;
    std::vector<Value> texts;
    for (const Value& value : column.values()) {
        const std::optional<Decimal>& number = column.spellingOf(value).number;
        if (!number)
            texts.push_back(value);
        else
            states.push_back(isPositive(*number) ? State::positive : State::negative);
    }
    if (!texts.empty())
        throw UnfitChoice(words.where() + " is cut as numbers, and also holds " + words.listed(texts)
                          + "; name the positive values instead, or say which words are missing");
    return states;
}

/// Makes values of the missing words that the choice names.
void keepNamed(LabelColumn& column, const StateChoice& choice)
{
    bool any = false;
    for (const auto* const list : {&choice.positive, &choice.negative})
        for (const std::string& name : *list)
            if (column.find(name) == LabelColumn::missing && column.holdsAsMissing(name)) {
                column.nameValue(name);
                any = true;
            }
    if (any)
        column.settle();
}

/// Puts the named values on one side.
class Sides {
public:
    Sides(const LabelColumn& column, const LabelWords& words)
        : column_(column), words_(words), states_(column.values().size(), State::other),
          namedBy_(column.values().size(), nullptr)
    {
    }

    void put(const std::vector<std::string>& names, State side)
    {
        for (const std::string& name : names) {
            const int value = column_.find(name);
            if (value == LabelColumn::missing)
                throw UnfitChoice(words_.neverHolds(name));
            const auto place = static_cast<std::size_t>(value);
            if (namedBy_[place] != nullptr)
                throw UnfitChoice(words_.namedTwice(*namedBy_[place], name, states_[place] != side));
            namedBy_[place] = &name;
            states_[place] = side;
        }
    }
    void putRest(State side) { std::ranges::replace(states_, State::other, side); }
    [[nodiscard]] std::vector<State> states() && { return std::move(states_); }

private:
    const LabelColumn& column_;
    const LabelWords& words_;
    std::vector<State> states_;
    std::vector<const std::string*> namedBy_;
};

} // namespace

std::vector<State> statesOf(LabelColumn& column, const StateChoice& choice, vexroc_voice voice)
{
    constexpr std::size_t obvious = 2; // values of which one is positive and the other not
    keepNamed(column, choice);
    const LabelWords words(column, voice);
    if (column.values().empty())
        throw UnfitChoice(words.where() + " holds missing cells only");
    if (choice.cut)
        return cutStates(column, choice, words);
    if (choice.others && !choice.negative.empty())
        throw UnfitChoice("negative values are named, and all others are to be negative: say one of the two");
    Sides sides(column, words);
    sides.put(choice.positive, State::positive);
    sides.put(choice.negative, State::negative);
    const bool negativeSaid = choice.others || !choice.negative.empty();
    if (choice.positive.empty() || (!negativeSaid && column.values().size() > obvious))
        throw UnfitChoice(words.statesNotSaid(choice.positive), words.waysOn(choice.positive));
    if (!negativeSaid || choice.others)
        sides.putRest(State::negative);
    return std::move(sides).states();
}

} // namespace ROCALG_920::labels
