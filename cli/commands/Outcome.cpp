#include "cli/commands/Outcome.h"

#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"

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

std::optional<std::string> reasonWithoutCurve(int positive, int negative)
{
    constexpr int fewestCases = 3;
    if (const std::optional<std::string> reason = missingState(positive, negative))
        return reason;
    if (positive + negative < fewestCases)
        return "at least " + std::to_string(fewestCases) + " cases are needed";
    return std::nullopt;
}

void addCurveNotes(const std::string& subject, const Cases& cases, std::vector<std::string>& notes)
{
    std::string note = subject + ": " + std::to_string(cases.positive) + " positive and "
        + counted(cases.negative, "negative case", "negative cases") + ", " + counted(cases.leftOut, "row", "rows")
        + " left out";
    if (const std::optional<std::string> reason = reasonWithoutCurve(cases.positive, cases.negative))
        note += "; no curve: " + *reason;
    notes.push_back(note);
}

void addAreaNotes(const std::string& subject, const AreaOutcome& outcome, std::vector<std::string>& notes)
{
    if (const std::optional<std::string> reason = missingState(outcome.positive, outcome.negative))
        notes.push_back(subject + ": no area: " + *reason);
    else if (!std::isnan(outcome.area) && std::isnan(outcome.stdError))
        notes.push_back(subject + ": no standard error: at least 2 positive and 2 negative cases are needed");
}

void addAreaCautions(const std::string& subject, const ShownArea& shown, std::vector<std::string>& notes)
{
    constexpr double chance = 0.5;
    if (shown.stdError == 0.0) // exact: complete separation, mostly
        notes.push_back(subject
                        + ": the standard error is 0; significance and interval say nothing beyond these cases");
    else if (shown.upper < chance)
        notes.push_back(subject + ": the area is below 0.5, " + (shown.smaller ? "larger" : "smaller")
                        + " values are more positive; " + (shown.smaller ? "leave out --smaller" : "give --smaller"));
}

void addDifferenceCautions(const std::string& subject, const auc_comparison_res& comparison,
                           std::vector<std::string>& notes)
{
    if (comparison.stdErrorDiff == 0.0) // exact
        notes.push_back(subject
                        + ": the standard error of the difference is 0; significance and interval say nothing "
                          "beyond these cases");
}

void addBiNegativeNotes(const std::string& subject, const Cases& cases, std::vector<std::string>& notes)
{
    if (cases.positive > 0 && cases.negative > 0 && cases.positive != cases.negative)
        notes.push_back(subject + ": nonparametric standard error, because --bi-negative needs as many positive as "
                        + "negative cases (" + std::to_string(cases.positive) + " and " + std::to_string(cases.negative)
                        + " here)");
}

void addInference(std::vector<Fact>& question, const char* standardError, double level)
{
    question.emplace_back("standard_error", standardError);
    question.emplace_back("confidence_level", level);
}

const char* standardErrorWord(bool biNegative) { return biNegative ? "bi-negative exponential" : "nonparametric"; }

std::string standardErrorHeading(bool biNegative, double level)
{
    const std::string assumption =
        biNegative ? "bi-negative exponential where the states are equally many" : "nonparametric";
    return "Standard error: " + assumption + "; confidence level " + shortest(level);
}

} // namespace vexroc
