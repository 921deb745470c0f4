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

std::string intervalOf(const vexroc_area_facts& facts)
{
    char text[80];
    std::snprintf(text, sizeof text, "%.4f to %.4f", facts.lower, facts.upper);
    return text;
}

/// Why there is no area at all; null when there may be one.
const char* absentState(const vexroc_area_facts& facts)
{
    if (facts.positive > 0 && facts.negative > 0)
        return nullptr;
    return facts.positive > 0 ? "no-negative" : facts.negative > 0 ? "no-positive" : "no-case";
}

} // namespace

void addAreaRemarks(std::string_view subject, const vexroc_area_facts& facts, RemarkList& list)
{
    const auto add = [&](const char* code, std::string_view detail = {}) {
        list.add(*kindOf(code),
                 {.subject = subject,
                  .detail = detail,
                  .test = facts.test != nullptr ? facts.test : "",
                  .direction = facts.smaller_is_positive != 0 ? "larger" : "smaller"});
    };
    if (const char* const absent = absentState(facts))
        return add(absent);
    if (std::min(facts.positive, facts.negative) < enoughCases)
        add("few-cases", statesBelow(enoughCases, facts));
    if (!std::isnan(facts.area) && std::isnan(facts.std_error))
        add("no-error", statesBelow(enoughForError, facts));
    const bool noWidth = facts.std_error == 0.0; // exact
    if (noWidth)
        add("zero-error");
    else if (facts.lower < 0.0 || facts.upper > 1.0)
        add("bound-outside", intervalOf(facts));
    if (noWidth ? facts.area < chance : facts.upper < chance)
        add("below-chance");
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
