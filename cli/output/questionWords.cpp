#include "cli/output/questionWords.h"

#include "cli/output/Documents.h"
#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <cmath>

namespace vexroc {

namespace {

/// The values of a state as they are spelled first.
std::vector<std::string> valuesOf(const CaseLabels& labels, vexroc_state state)
{
    std::vector<std::string> texts;
    for (const ColumnLabels::Value& value : labels.state().values())
        if (value.state == state)
            texts.push_back(value.text);
    return texts;
}

/// In quotes where blanks would not be seen.
std::string shown(const ColumnLabels::Value& value)
{
    constexpr std::size_t most = 40; // characters
    const bool isPlain = trimmed(value.text) == value.text;
    return bothEnds(isPlain ? visible(value.text) : inQuotes(value.text), most);
}

/// " (12)"; nothing where rows are not cases.
std::string inBrackets(long long rows, const Question& question)
{
    return question.count.empty() ? " (" + std::to_string(rows) + ')' : "";
}

/// "malignant (212), suspect (3)".
std::string withRows(const Question& question, const CaseLabels& labels, vexroc_state state)
{
    constexpr int most = 5;
    std::string list;
    int count = 0;
    for (const ColumnLabels::Value& value : labels.state().values())
        if (value.state == state && ++count <= most)
            list += (list.empty() ? "" : ", ") + shown(value) + inBrackets(value.rows, question);
    return count > most ? list + " and " + std::to_string(count - most) + " more" : list;
}

std::string rowsOf(const Question& question, const CaseLabels& labels, vexroc_state state)
{
    long long rows = 0;
    for (const ColumnLabels::Value& value : labels.state().values())
        rows += value.state == state ? value.rows : 0;
    return inBrackets(rows, question);
}

/// "Positive: grade >= 3 (12); negative: grade < 3 (24)".
std::string cutHeading(const Question& question, const CaseLabels& labels)
{
    const StateQuestion& state = question.state;
    const std::string& sign = state.choice.sign;
    const std::string otherSign = sign == ">=" ? "<" : sign == ">" ? "<=" : sign == "<=" ? ">" : ">=";
    const auto side = [&](const std::string& s) { return visible(state.column + ' ' + s + ' ' + state.choice.bound); };
    return "Positive: " + side(sign) + rowsOf(question, labels, VEXROC_STATE_POSITIVE)
        + "; negative: " + side(otherSign) + rowsOf(question, labels, VEXROC_STATE_NEGATIVE);
}

std::string statesHeading(const Question& question, const CaseLabels& labels)
{
    if (!question.state.choice.sign.empty())
        return cutHeading(question, labels);
    const std::string negative = withRows(question, labels, VEXROC_STATE_NEGATIVE);
    const std::string others = withRows(question, labels, VEXROC_STATE_OTHER);
    return "Positive: " + visible(question.state.column) + " = " + withRows(question, labels, VEXROC_STATE_POSITIVE)
        + "; negative: " + (negative.empty() ? "none" : negative) + (others.empty() ? "" : "; left out: " + others);
}

std::string oneSided(const Inference& inference)
{
    return inference.alternative == "two-sided" ? "" : ", one-sided (" + inference.alternative + ')';
}

std::string testInWords(const Inference& inference, const AreaMethods& methods)
{
    const bool isWald = inference.pMethod == "wald";
    const std::string null = inference.nullArea == 0.5 ? "" : " against " + shortest(inference.nullArea);
    return (isWald ? "Wald" : methods.areExact() ? "exact Mann-Whitney" : "Mann-Whitney") + null + oneSided(inference);
}

/// Of the tests that are not like most.
std::string otherDirections(const Question& question)
{
    std::string tests;
    for (const auto& [test, larger] : question.largerOf)
        if (larger != question.largerIsPositive)
            tests += (tests.empty() ? "" : ", ") + visible(test);
    return tests.empty() ? "" : std::string("; ") + (question.largerIsPositive ? "smaller" : "larger") + " of " + tests;
}

} // namespace

std::string errorInWords(std::string_view error)
{
    return error == "delong"     ? "DeLong"
        : error == "weighted"    ? "of weighted cases"
        : error == "bi-negative" ? "bi-negative exponential where the states are equally many"
                                 : "Hanley-McNeil";
}

std::string intervalInWords(std::string_view interval)
{
    return interval == "bootstrap"                        ? "percentile bootstrap"
        : interval == "bca"                               ? "BCa bootstrap"
        : interval == "btii"                              ? "BTII bootstrap"
        : interval == "wald" || interval == "wald-delong" ? "Wald"
        : interval == "newcombe"                          ? "Newcombe"
                                                          : std::string(interval);
}

std::string intervalHeading(const Inference& asked, std::string_view interval)
{
    const bool isBootstrap = interval == "bootstrap" || interval == "bca" || interval == "btii";
    return "Interval: " + intervalInWords(interval) + ", level " + shortest(asked.level)
        + (isBootstrap ? ", " + std::to_string(asked.replicates) + " replicates, seed " + std::to_string(asked.seed)
                       : "");
}

std::string questionHeading(const Question& question, const CaseLabels& labels)
{
    return statesHeading(question, labels) + "; " + question.positiveEnd() + " values are more positive"
        + otherDirections(question);
}

std::vector<Fact> questionFacts(const Question& question, const CaseLabels& labels)
{
    const StateChoice& choice = question.state.choice;
    std::vector<Fact> facts{{"input", question.input}, {"state", question.state.column}};
    if (choice.sign.empty()) {
        facts.emplace_back("positive", valuesOf(labels, VEXROC_STATE_POSITIVE));
        facts.emplace_back("negative", valuesOf(labels, VEXROC_STATE_NEGATIVE));
    } else {
        facts.emplace_back("state_cut", choice.sign + choice.bound);
    }
    facts.emplace_back("more_positive", question.positiveEnd());
    if (!question.largerOf.empty()) {
        std::vector<std::string> own;
        for (const auto& [test, larger] : question.largerOf)
            own.push_back(test + (larger ? ":larger" : ":smaller"));
        facts.emplace_back("directions", std::move(own));
    }
    if (!question.count.empty())
        facts.emplace_back("count", question.count);
    facts.emplace_back("equal_to_cut_off", question.equalIsPositive ? "positive" : "negative");
    return facts;
}

void addSlices(const Question& question, std::vector<std::string>& heading)
{
    if (!question.by.empty())
        heading.push_back("One analysis by value of " + visible(question.by));
    if (!question.count.empty())
        heading.push_back("Cases per row: " + visible(question.count));
}

void addSlices(const Question& question, std::vector<Fact>& facts)
{
    if (question.grouping)
        facts.emplace_back("group", question.grouping->column);
    if (!question.by.empty())
        facts.emplace_back("by", question.by);
}

void AreaMethods::add(const Results& results)
{
    for (const TestResult& test : results.tests) {
        if (!std::isnan(test.area.pValue))
            tests_.insert(test.area.pMethod);
        if (!std::isnan(test.area.lower))
            intervals_.insert(test.area.interval);
    }
}

void addAreaFacts(std::vector<Fact>& facts, const Question& question)
{
    const Inference& asked = question.inference;
    facts.emplace_back("interval", asked.interval);
    facts.emplace_back("confidence_level", asked.level);
    if (asked.isBootstrap()) {
        facts.emplace_back("replicates", static_cast<unsigned long long>(asked.replicates));
        facts.emplace_back("seed", asked.seed);
    }
    facts.emplace_back("p_method", asked.pMethod);
    if (asked.pMethod == "mann-whitney")
        facts.emplace_back("exact", asked.exact);
    facts.emplace_back("alternative", asked.alternative);
    facts.emplace_back("null_area", asked.nullArea);
    facts.emplace_back("error", question.errorOfAreas());
}

void addDifferenceFacts(std::vector<Fact>& facts, const Question& question)
{
    facts.emplace_back("confidence_level", question.inference.level);
    facts.emplace_back("alternative", question.inference.alternative);
    facts.emplace_back("error", question.errorOfDifferences());
}

std::string intervalOfAreas(const Inference& inference)
{
    return readable(100.0 * inference.level, CellRole::measure) + " % " + intervalInWords(inference.interval)
        + " interval";
}

std::string areaHeading(const Question& question, const AreaMethods& methods)
{
    const Inference& asked = question.inference;
    return intervalHeading(asked, asked.interval) + "; p: " + testInWords(asked, methods)
        + "; standard error: " + errorInWords(question.errorOfAreas());
}

std::string differenceWords(const Question& question)
{
    return "Wald, level " + shortest(question.inference.level) + "; p: Wald" + oneSided(question.inference)
        + "; standard error: " + errorInWords(question.errorOfDifferences());
}

std::string differenceHeading(const Question& question) { return "Interval: " + differenceWords(question); }

const char* pairedCasesWord(const Question& question) { return question.completeCases ? "complete" : "pairwise"; }

std::string pairedCasesHeading(const Question& question)
{
    return std::string("Cases: ") + pairedCasesWord(question) + ", the rows in which "
        + (question.completeCases ? "all tests" : "both tests of a pair") + " are known";
}

} // namespace vexroc
