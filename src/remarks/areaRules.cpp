#include "remarks/areaRules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace ROCALG_920::remarks {

namespace {

constexpr long long enoughCases = 10; ///< of either state
constexpr long long enoughForError = 2;
constexpr double chance = 0.5;
constexpr long long manyComparisons = 3;
constexpr int valuesOfYesNoTest = 2;

/// The states with fewer cases than that.
std::string statesBelow(long long enough, const vexroc_area_facts& facts)
{
    std::string states;
    if (facts.positive < enough)
        states += std::to_string(facts.positive) + " positive";
    if (facts.negative < enough)
        states += (states.empty() ? "" : ", ") + std::to_string(facts.negative) + " negative";
    return states;
}

std::string inBrackets(const char* format, double first, double second)
{
    char text[80];
    std::snprintf(text, sizeof text, format, first, second);
    return text;
}

/// The rules of interval and p, as far as it matters to what is said of them.
class Rules {
public:
    explicit Rules(const vexroc_area_facts& facts)
        : interval_(facts.interval != nullptr ? facts.interval : "wald"),
          p_(facts.p_method != nullptr ? facts.p_method : "wald")
    {
    }
    [[nodiscard]] std::string_view interval() const noexcept { return interval_; }
    [[nodiscard]] bool isBootstrap() const noexcept { return interval_ == "bootstrap" || interval_ == "bca"; }
    /// Area -+ z times an error: may go beyond 0 and 1, and has no length without error.
    [[nodiscard]] bool isWald() const noexcept { return interval_ == "wald" || interval_ == "wald-delong"; }
    [[nodiscard]] bool pIsByRanks() const noexcept { return p_.starts_with("mann-whitney"); }
    /// Are interval and p good for a few cases?
    [[nodiscard]] bool areForFewCases() const noexcept
    {
        return (interval_ == "score" || interval_ == "newcombe") && pIsByRanks();
    }
    /// Is one of them made of the standard error?
    [[nodiscard]] bool useError() const noexcept { return isWald() || !pIsByRanks(); }
    [[nodiscard]] bool areOneMethod() const noexcept { return isWald() && p_ == "wald"; }

private:
    std::string_view interval_;
    std::string_view p_;
};

bool isTwoSided(const vexroc_area_facts& facts)
{
    return facts.alternative == nullptr || std::string_view(facts.alternative) == "two-sided";
}

/// Does one of interval and p hold the null for possible at this level, and the other not?
bool disagreeAboutNull(const vexroc_area_facts& facts)
{
    const bool areKnown = facts.level > 0.0 && !std::isnan(facts.p_value) && !std::isnan(facts.lower);
    const bool isInside = facts.lower <= facts.null_area && facts.null_area <= facts.upper;
    return areKnown && isTwoSided(facts) && isInside != (facts.p_value > 1.0 - facts.level);
}

/// Does the interval or the p value leave no doubt that the area is below chance?
bool isClearlyBelowChance(const vexroc_area_facts& facts)
{
    const bool isRejected = facts.null_area == chance && facts.p_value <= 1.0 - facts.level; // exact
    return facts.area < chance
        && (facts.std_error == 0.0 || facts.upper < chance || (facts.level > 0.0 && isTwoSided(facts) && isRejected));
}

/// Why there is no area at all; null when there may be one.
const char* absentState(const vexroc_area_facts& facts)
{
    if (facts.positive > 0 && facts.negative > 0)
        return nullptr;
    return facts.positive > 0 ? "no-negative" : facts.negative > 0 ? "no-positive" : "no-case";
}

/// What the rules of interval and p have to say of each other and of these limits.
template <class Add>
void addLimitRemarks(const vexroc_area_facts& facts, const Rules& rules, Add&& add)
{
    const bool noLength = facts.lower == facts.upper; // exact
    if (facts.edge != 0)
        add("score-instead", rules.interval());
    if (facts.percentile != 0)
        add("percentile-instead");
    if (rules.isBootstrap() && noLength)
        add("bootstrap-at-end");
    else if (facts.held != 0)
        add("few-replicates");
    if (!rules.areOneMethod() && disagreeAboutNull(facts))
        add("interval-and-p", inBrackets("the area %g, p %.4f", facts.null_area, facts.p_value));
    if (!isTwoSided(facts))
        add("one-sided", facts.alternative);
}

} // namespace

bool needsMoreCases(const vexroc_area_facts& facts)
{
    return std::min(facts.positive, facts.negative) < enoughCases && !Rules(facts).areForFewCases();
}

void addAreaRemarks(std::string_view subject, const vexroc_area_facts& facts, RemarkList& list)
{
    const Rules rules(facts);
    const auto add = [&](const char* code, std::string_view detail = {}) {
        list.add(*kindOf(code),
                 {.subject = subject,
                  .detail = detail,
                  .test = facts.test != nullptr ? facts.test : "",
                  .direction = facts.smaller_is_positive != 0 ? "larger" : "smaller"});
    };
    if (const char* const absent = absentState(facts))
        return add(absent);
    if (needsMoreCases(facts))
        add("few-cases", statesBelow(enoughCases, facts));
    if (!std::isnan(facts.area) && std::isnan(facts.std_error))
        add("no-error", statesBelow(enoughForError, facts));
    const bool noError = facts.std_error == 0.0; // exact
    if (noError && rules.useError())
        add("zero-error");
    else if (rules.isWald() && (facts.lower < 0.0 || facts.upper > 1.0))
        add("bound-outside", inBrackets("%.4f to %.4f", facts.lower, facts.upper));
    if (isClearlyBelowChance(facts))
        add("below-chance");
    addLimitRemarks(facts, rules, add);
    if (facts.distinct_values == valuesOfYesNoTest && facts.positive + facts.negative > valuesOfYesNoTest)
        add("two-values");
    if (facts.ties != 0)
        add("ties");
}

void addDifferenceRemarks(std::string_view subject, double difference, double stdError, RemarkList& list)
{
    if (std::isnan(difference))
        return; // an area is missing, which is said of the area
    if (std::isnan(stdError))
        list.add(*kindOf("no-error"), {.subject = subject});
    if (stdError == 0.0 && difference != 0.0) // exact
        list.add(*kindOf("zero-error-of-difference"), {.subject = subject});
}

void addComparisonRemarks(std::string_view subject, long long count, RemarkList& list)
{
    if (count >= manyComparisons)
        list.add(*kindOf("many-comparisons"), {.subject = subject, .detail = std::to_string(count)});
}

} // namespace ROCALG_920::remarks
