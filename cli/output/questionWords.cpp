#include "cli/output/questionWords.h"

#include "cli/output/Documents.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

namespace vexroc {

std::string questionHeading(const Question& question)
{
    return "Positive: " + visible(question.state.column) + " = " + visible(question.state.values.front()) + "; "
        + question.positiveEnd() + " values are more positive";
}

std::vector<Fact> questionFacts(const Question& question)
{
    return {{"input", question.input},
            {"state", question.state.column},
            {"positive", std::vector<std::string>{question.state.values.front()}},
            {"more_positive", question.positiveEnd()},
            {"equal_to_cut_off", question.equalIsPositive ? "positive" : "negative"}};
}

void addInference(std::vector<Fact>& facts, const char* standardError, double level)
{
    facts.emplace_back("standard_error", standardError);
    facts.emplace_back("confidence_level", level);
}

const char* standardErrorWord(bool biNegative) { return biNegative ? "bi-negative exponential" : "nonparametric"; }

std::string standardErrorHeading(bool biNegative, double level)
{
    const std::string assumption =
        biNegative ? "bi-negative exponential where the states are equally many" : "nonparametric";
    return "Standard error: " + assumption + "; confidence level " + shortest(level);
}

std::string pairedErrorHeading(double level)
{
    return std::string("Standard errors: ") + pairedErrorWord + "; confidence level " + shortest(level);
}

} // namespace vexroc
