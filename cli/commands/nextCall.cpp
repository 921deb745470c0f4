#include "cli/commands/nextCall.h"

#include "cli/commands/columnFindings.h"
#include "cli/commands/likelyNames.h"
#include "cli/commands/surveyedLabels.h"
#include "cli/study/require.h"
#include "cli/words/CallLine.h"
#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <vector>

namespace vexroc {

namespace {

using namespace likelyNames;

std::string lowered(std::string_view text)
{
    std::string lower;
    std::ranges::transform(text, std::back_inserter(lower), lowerLetter);
    return lower;
}

bool isAmong(const std::string& word, Words words) { return std::ranges::find(words, lowered(word)) != words.end(); }

/// The values of a column as a state, as the library tells them apart: ascending.
std::vector<Word> labelsOf(const ColumnFacts& facts, const Input& input)
{
    const SettledLabels labels = surveyedLabels(facts, input);
    std::vector<Word> values;
    for (int value = 0; value < vexroc_labels_count(labels.get()); ++value) {
        vexroc_label label{};
        label.struct_size = sizeof label;
        require(vexroc_labels_value(labels.get(), value, &label));
        values.push_back({std::string(label.text, label.length), static_cast<std::size_t>(label.count)});
    }
    return values;
}

/// A column as the state.
struct StateColumn {
    const ColumnFacts* facts;
    std::string positive;
    std::string negative; ///< where there are more than two values
    int likelihood;
    bool isSure;
};

/// A column of more than two values: the two that are known as states, or else the commonest, each by its name. None
/// where values do not repeat.
std::optional<StateColumn> asStateOfMany(const ColumnFacts& facts, std::vector<Word> values)
{
    constexpr int unlikely = -20; // any column of two values goes before
    std::ranges::stable_sort(values, std::greater(), &Word::rows);
    if (values[1].rows < 2)
        return std::nullopt;
    const auto place = [&](Words words, const Word* taken) -> const Word& {
        const auto isOne = [&](const Word& value) { return &value != taken && isAmong(value.text, words); };
        const auto known = std::ranges::find_if(values, isOne);
        return known != values.end() ? *known : &values[1] != taken ? values[1] : values[0];
    };
    const Word& positive = place(positiveWords, nullptr);
    const int named = saysAny(facts.name(), stateNames) ? 3 : 0;
    return StateColumn{.facts = &facts,
                       .positive = positive.text,
                       .negative = place(negativeWords, &positive).text,
                       .likelihood = unlikely + named + (facts.hasTexts() ? 1 : 0),
                       .isSure = false};
}

/// A column of two values, or of a few.
std::optional<StateColumn> asState(const ColumnFacts& facts, const Input& input)
{
    constexpr std::size_t fewWords = 16; // in which two values may be spelled
    if (!facts.knowsAllWords() || !facts.undecodable().empty() || facts.texts().size() > fewWords)
        return std::nullopt;
    const std::vector<Word> values = labelsOf(facts, input);
    constexpr std::size_t few = 6;
    if (values.size() < 2 || values.size() > few)
        return std::nullopt;
    if (values.size() > 2)
        return asStateOfMany(facts, values);
    const Word& first = values.front();
    const Word& second = values.back();
    const auto isPair = [](const Word& positive, const Word& negative) {
        return isAmong(positive.text, positiveWords) && isAmong(negative.text, negativeWords);
    };
    const bool isSex = isAmong(first.text, sexes) || isAmong(second.text, sexes)
        || (isAmong(first.text, std::array<std::string_view, 1>{"f"}) && lowered(second.text) == "m");
    const bool isFirst = isPair(first, second);
    const bool isKnown = isFirst || isPair(second, first);
    const bool isOther = saysAny(facts.name(), otherNames) || isSex;
    const bool isNamed = saysAny(facts.name(), stateNames) && !isOther;
    const bool isRarerFirst = first.rows < second.rows;
    return StateColumn{.facts = &facts,
                       .positive = (isKnown ? isFirst : isRarerFirst) ? first.text : second.text,
                       .negative = "",
                       .likelihood =
                           (isKnown ? 2 : 0) + (isNamed ? 3 : 0) + (facts.hasTexts() ? 1 : 0) - (isOther ? 9 : 0),
                       .isSure = isKnown && isNamed};
}

using Columns = std::vector<const ColumnFacts*>;

/// The columns that their names tell from all others.
Columns namedOnce(std::span<const ColumnFacts> columns)
{
    std::map<std::string_view, int> count;
    for (const ColumnFacts& facts : columns)
        ++count[facts.name()];
    Columns once;
    for (const ColumnFacts& facts : columns)
        if (count[facts.name()] == 1)
            once.push_back(&facts);
    return once;
}

std::optional<StateColumn> likeliestState(const Columns& columns, const Input& input)
{
    std::optional<StateColumn> best;
    bool isAlone = true;
    for (const ColumnFacts* const facts : columns) {
        const auto state = asState(*facts, input);
        if (!state)
            continue;
        isAlone = !best || state->likelihood > best->likelihood || (isAlone && state->likelihood < best->likelihood);
        if (!best || state->likelihood > best->likelihood)
            best = state;
    }
    if (best)
        best->isSure = best->isSure && isAlone;
    return best;
}

/// Could every number with the other decimal sign have it between thousands?
bool isDoubtful(const ColumnFacts& facts, char decimal)
{
    return std::ranges::all_of(facts.texts().all(), [&](const auto& word) {
        const auto grouped = groupedNumber(word.first, decimal == ',' ? Thousands::comma : Thousands::point);
        return grouped && grouped->isDoubtful();
    });
}

/// Is it a column of numbers; with `otherDecimal`, when they have that decimal sign, or none?
bool isNumeric(const ColumnFacts& facts, std::optional<char> otherDecimal)
{
    if (!otherDecimal)
        return facts.hasNumbers() && !facts.hasTexts();
    return facts.hasNoDecimals()
        && (facts.hasTexts() ? facts.hasOtherDecimals() && !isDoubtful(facts, *otherDecimal) : facts.hasNumbers());
}

struct Tests {
    std::vector<std::string> sound = {};
    std::vector<const ColumnFacts*> withCodes = {}; ///< likely ones
};

Tests testsIn(const Columns& columns, const ColumnFacts* state, std::optional<char> otherDecimal = {})
{
    Tests tests;
    std::vector<std::string> yesNoTests;
    for (const ColumnFacts* const facts : columns) {
        if (facts == state || !isNumeric(*facts, otherDecimal) || facts->distinct() < 2 || isId(*facts)
            || isRepeatedId(*facts))
            continue;
        if (!likelyCodes(*facts).empty())
            tests.withCodes.push_back(facts);
        else
            (facts->distinct() == 2 ? yesNoTests : tests.sound).push_back(facts->name());
    }
    if (tests.sound.empty())
        tests.sound = std::move(yesNoTests);
    return tests;
}

/// An item as lists and assignments read it back.
std::string item(const std::string& text)
{
    if (!text.empty() && trimmed(text) == text && text.find_first_of(",\"=<>") == std::string::npos && text != "others")
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

/// The arguments of a call that reads the same data.
std::vector<std::string> inputArguments(const InputOptions& options)
{
    std::vector<std::string> arguments;
    const bool looksLikeOption = options.file.starts_with('-') && options.file != "-";
    if (!options.file.empty())
        arguments.push_back(std::string(looksLikeOption ? "./" : "").append(options.file));
    const std::pair<const char*, const std::string*> given[] = {
        {"--delimiter", &options.delimiter}, {"--decimal", &options.decimal}, {"--thousands", &options.thousands},
        {"--encoding", &options.encoding},   {"--missing", &options.missing}, {"--sqlite", &options.sqlite},
        {"--postgres", &options.postgres},   {"--table", &options.table},     {"--query", &options.query}};
    for (const auto& [option, value] : given)
        if (!value->empty()) {
            arguments.emplace_back(option);
            arguments.push_back(*value);
        }
    if (options.header)
        arguments.emplace_back("--header");
    if (options.noHeader)
        arguments.emplace_back("--no-header");
    return arguments;
}

/// An option and its value, also where that begins with a dash.
void addOption(std::vector<std::string>& arguments, const std::string& option, const std::string& value)
{
    if (value.starts_with('-')) {
        arguments.push_back(std::string(option).append("=").append(value));
    } else {
        arguments.push_back(option);
        arguments.push_back(value);
    }
}

constexpr std::size_t mostTests = 40; // in a line that somebody may still read

std::string callOf(const std::string& state, const std::string& negative, const std::vector<std::string>& tests,
                   const InputOptions& options)
{
    std::string list;
    for (const std::string& test : std::span(tests).first(std::min(mostTests, tests.size())))
        (list.empty() ? list : list.append(1, ',')).append(item(test));
    std::vector<std::string> arguments{"auc"};
    for (std::string& argument : inputArguments(options))
        arguments.push_back(std::move(argument));
    addOption(arguments, "--state", state);
    if (!negative.empty())
        addOption(arguments, "--negative", item(negative));
    addOption(arguments, "--test", list);
    return CallLine(std::vector<std::string_view>(arguments.begin(), arguments.end())).text();
}

/// Tests, and the codes in them that may mean missing values.
struct CodedTests {
    std::vector<std::string> names = {};
    std::vector<std::string> codes = {};
};

/// May the number be one of the values of the test that are no codes?
bool mayMeasure(const ColumnFacts& test, double number)
{
    const auto isNumber = [&](const NumberInRows& code) { return code.number == number; };
    return number >= test.smallest() && number <= test.largest() && std::ranges::none_of(likelyCodes(test), isNumber);
}

/// Those of the tests that one list of missing words fits: no code of one is a value of another.
CodedTests agreeing(const std::vector<const ColumnFacts*>& tests)
{
    const auto spoils = [](const ColumnFacts* one, const ColumnFacts* other) {
        const auto isValue = [&](const NumberInRows& code) { return mayMeasure(*other, code.number); };
        return std::ranges::any_of(likelyCodes(*one), isValue);
    };
    std::vector<const ColumnFacts*> taken;
    CodedTests coded;
    for (const ColumnFacts* const test : tests) {
        if (std::ranges::any_of(taken, [&](const auto* other) { return spoils(test, other) || spoils(other, test); }))
            continue;
        taken.push_back(test);
        coded.names.push_back(test->name());
        for (const NumberInRows& code : likelyCodes(*test))
            if (const std::string digits = wholeDigits(code.number);
                std::ranges::find(coded.codes, digits) == coded.codes.end())
                coded.codes.push_back(digits);
    }
    return coded;
}

InputOptions withMissing(InputOptions options, const std::vector<std::string>& codes)
{
    for (const std::string& code : codes)
        (options.missing.empty() ? options.missing : options.missing.append(1, ',')).append(code);
    return options;
}

/// "999 stands for a missing value".
std::string codesMean(const std::vector<std::string>& codes, const char* one, const char* many)
{
    std::string list = codes.front();
    for (std::size_t i = 1; i < codes.size(); ++i)
        list.append(i + 1 < codes.size() ? ", " : " and ").append(codes[i]);
    return list + (codes.size() == 1 ? one : many);
}

std::string ifMissing(const std::vector<std::string>& codes)
{
    return codesMean(codes, " stands for a missing value", " stand for missing values");
}

/// "ill = yes from no".
std::string statesIn(const StateColumn& state)
{
    const std::string named = visible(state.facts->name()).append(" = ").append(visible(state.positive));
    return state.negative.empty() ? named : named + " from " + visible(state.negative); // the rest is left out
}

/// Of calls about a state.
class Calls {
public:
    Calls(const StateColumn& state, const InputOptions& read) : state_(state), read_(read) {}

    void addSound(const std::vector<std::string>& tests)
    {
        const std::string part = tests.size() <= mostTests
            ? ""
            : " (The first " + std::to_string(mostTests) + " of " + std::to_string(tests.size()) + " tests.)";
        add((state_.isSure ? "How well do the tests tell " + statesIn(state_) + "?"
                           : "How well do they tell " + statesIn(state_) + ", if that is the question?")
                + part,
            tests, read_, state_.isSure);
    }
    void addCoded(const CodedTests& tests)
    {
        const std::string missing = ifMissing(tests.codes);
        const bool isAlone = calls_.empty();
        add(isAlone ? "How well do they tell " + statesIn(state_) + ", if " + missing + "?" : "If " + missing + ":",
            tests.names, withMissing(read_, tests.codes), false);
        if (isAlone)
            add("If " + codesMean(tests.codes, " is a measured value:", " are measured values:"), tests.names, read_,
                false);
    }
    [[nodiscard]] std::vector<NextCall> calls() && { return std::move(calls_); }

private:
    void add(std::string about, const std::vector<std::string>& tests, const InputOptions& read, bool isSure)
    {
        const std::string choice = item(state_.facts->name()).append("=").append(item(state_.positive));
        calls_.push_back({.command = callOf(choice, state_.negative, tests, read),
                          .about = std::move(about),
                          .isSure = isSure,
                          .isComplete = true});
    }

    const StateColumn& state_;
    const InputOptions& read_;
    std::vector<NextCall> calls_;
};

/// A call that lacks its state, or its tests.
NextCall formOf(const std::optional<StateColumn>& state, std::vector<std::string> tests, const InputOptions& read)
{
    if (tests.empty())
        tests = {"COLUMN"};
    const std::string choice =
        state ? item(state->facts->name()).append("=").append(item(state->positive)) : "COLUMN=VALUE";
    return {.command = callOf(choice, state ? state->negative : "", tests, read),
            .about = !state ? "Fill in the state; no column holds a few values that could be it:"
                            : "Fill in the tests; no column of numbers is a test without doubt:",
            .isSure = false,
            .isComplete = false};
}

} // namespace

std::vector<NextCall> nextCalls(std::span<const ColumnFacts> all, const InputOptions& options, const Input& input)
{
    const Columns columns = namedOnce(all);
    const std::optional<StateColumn> state = likeliestState(columns, input);
    const ColumnFacts* const stateColumn = state ? state->facts : nullptr;
    Tests tests = testsIn(columns, stateColumn);
    InputOptions read = options;
    const char otherDecimal = input.form.numbers.decimal == ',' ? '.' : ',';
    if (Tests others = testsIn(columns, stateColumn, otherDecimal);
        input.kind == Input::Kind::delimited && options.thousands.empty() && others.sound.size() > tests.sound.size()) {
        tests = std::move(others);
        read.decimal = otherDecimal == ',' ? "comma" : "point";
    }
    const CodedTests coded = agreeing(tests.withCodes);
    if (!state || (tests.sound.empty() && coded.names.empty()))
        return {formOf(state, tests.sound.empty() ? coded.names : tests.sound, read)};
    Calls calls(*state, read);
    if (!tests.sound.empty())
        calls.addSound(tests.sound);
    if (!coded.names.empty())
        calls.addCoded(coded);
    return std::move(calls).calls();
}

} // namespace vexroc
