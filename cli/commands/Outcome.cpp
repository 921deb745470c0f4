#include "cli/commands/Outcome.h"

#include "cli/Failure.h"
#include "cli/text/Words.h"

#include <cmath>
#include <optional>

namespace vexroc {

namespace {

std::string counted(int count, const char* singular, const char* plural)
{
    return std::to_string(count) + ' ' + (count == 1 ? singular : plural);
}

/// Why no curve and no area exist; nothing when both states occur.
std::optional<std::string> missingState(int positive, int negative)
{
    if (positive > 0 && negative > 0)
        return std::nullopt;
    const std::string needed = "; positive and negative cases are needed";
    if (positive + negative == 0)
        return "no case is left" + needed;
    return "every case is " + std::string(positive > 0 ? "positive" : "negative") + needed;
}

} // namespace

void requireRows(const void* rows)
{
    if (!rows)
        throw analysisError("not enough memory for the curve");
}

void requireAnalysed(const auc_res& result, const Cases& cases)
{
    if (cases.count() > 0 && result.posCount + result.negCount == 0.0)
        throw analysisError("not enough memory for the area");
}

void addCurveNotes(const std::string& subject, const Cases& cases, std::vector<std::string>& notes)
{
    constexpr int fewestCases = 3;
    std::string note = subject + ": " + std::to_string(cases.positive) + " positive and "
        + counted(cases.negative, "negative case", "negative cases") + ", " + counted(cases.leftOut, "row", "rows")
        + " left out";
    if (const std::optional<std::string> reason = missingState(cases.positive, cases.negative))
        note += "; no curve: " + *reason;
    else if (cases.count() < fewestCases)
        note += "; no curve: at least " + std::to_string(fewestCases) + " cases are needed";
    notes.push_back(note);
}

void addAreaNotes(const std::string& subject, const AreaOutcome& outcome, std::vector<std::string>& notes)
{
    if (const std::optional<std::string> reason = missingState(outcome.positive, outcome.negative))
        notes.push_back(subject + ": no area: " + *reason);
    else if (!std::isnan(outcome.area) && std::isnan(outcome.stdError))
        notes.push_back(subject + ": no standard error: at least 2 positive and 2 negative cases are needed");
}

void addBiNegativeNotes(const std::string& subject, const Cases& cases, std::vector<std::string>& notes)
{
    if (cases.positive > 0 && cases.negative > 0 && cases.positive != cases.negative)
        notes.push_back(subject + ": nonparametric standard error, because --bi-negative needs as many positive as "
                        + "negative cases (" + std::to_string(cases.positive) + " and "
                        + std::to_string(cases.negative) + " here)");
}

void addInference(std::vector<Fact>& question, const char* standardError, double level)
{
    question.emplace_back("standard_error", standardError);
    question.emplace_back("confidence_level", level);
}

const char* standardErrorWord(bool biNegative)
{
    return biNegative ? "bi-negative exponential" : "nonparametric";
}

std::string standardErrorHeading(bool biNegative, double level)
{
    const std::string assumption =
        biNegative ? "bi-negative exponential where the states are equally many" : "nonparametric";
    return "Standard error: " + assumption + "; confidence level " + shortest(level);
}

} // namespace vexroc
