#include "cli/study/Remarks.h"

#include "cli/words/VisibleText.h"

#include <cmath>
#include <utility>

namespace vexroc {

namespace {

std::string counted(long long count, const char* singular, const char* plural)
{
    return std::to_string(count) + ' ' + (count == 1 ? singular : plural);
}

/// Why no curve and no area exist; nothing when both states occur.
std::optional<std::string> missingState(long long positive, long long negative)
{
    if (positive > 0 && negative > 0)
        return std::nullopt;
    const std::string needed = "; positive and negative cases are needed";
    if (positive + negative == 0)
        return "no case is left" + needed;
    return "every case is " + std::string(positive > 0 ? "positive" : "negative") + needed;
}

} // namespace

std::vector<std::pair<std::string, long long>> RowCounts::reasons() const
{
    std::vector<std::pair<std::string, long long>> reasons{
        {"missing state", missingState},   {"other state", otherState},      {"missing group", missingGroup},
        {"missing weight", missingWeight}, {"in neither group", otherGroup}, {"unusable weight", unusableWeight},
        {"missing test", incomplete}};
    std::erase_if(reasons, [](const auto& reason) { return reason.second == 0; });
    return reasons;
}

std::optional<std::string> reasonWithoutCurve(long long positive, long long negative)
{
    constexpr int fewestCases = 3;
    if (std::optional<std::string> reason = missingState(positive, negative))
        return reason;
    if (positive + negative < fewestCases)
        return "at least " + std::to_string(fewestCases) + " cases are needed";
    return std::nullopt;
}

void addCurveNotes(const std::string& subject, const Area& area, std::vector<std::string>& notes)
{
    std::string note = subject + ": " + std::to_string(area.positive) + " positive and "
        + counted(area.negative, "negative case", "negative cases") + ", " + counted(area.leftOut, "row", "rows")
        + " left out";
    if (const std::optional<std::string> reason = reasonWithoutCurve(area.positive, area.negative))
        note += "; no curve: " + *reason;
    notes.push_back(note);
}

void addAreaNotes(const std::string& subject, const Area& area, std::vector<std::string>& notes)
{
    if (const std::optional<std::string> reason = missingState(area.positive, area.negative))
        notes.push_back(subject + ": no area: " + *reason);
    else if (!std::isnan(area.area) && std::isnan(area.stdError))
        notes.push_back(subject + ": no standard error: at least 2 positive and 2 negative cases are needed");
}

void addAreaCautions(const std::string& subject, const Area& area, bool largerIsPositive,
                     std::vector<std::string>& notes)
{
    constexpr double chance = 0.5;
    if (area.stdError == 0.0) // exact: complete separation, mostly
        notes.push_back(subject + ": the standard error is 0; p value and interval say nothing beyond these cases");
    else if (area.upper < chance)
        notes.push_back(subject + ": the area is below 0.5, " + (largerIsPositive ? "smaller" : "larger")
                        + " values are more positive; "
                        + (largerIsPositive ? "give --smaller" : "leave out --smaller"));
}

void addDifferenceCautions(const std::string& subject, const Difference& difference, std::vector<std::string>& notes)
{
    if (difference.stdError == 0.0) // exact
        notes.push_back(subject
                        + ": the standard error of the difference is 0; p value and interval say nothing "
                          "beyond these cases");
}

void addBiNegativeNotes(const std::string& subject, const Area& area, std::vector<std::string>& notes)
{
    if (area.positive > 0 && area.negative > 0 && area.positive != area.negative)
        notes.push_back(subject + ": nonparametric standard error, because --bi-negative needs as many positive as "
                        + "negative cases (" + std::to_string(area.positive) + " and " + std::to_string(area.negative)
                        + " here)");
}

std::string rowNote(const RowCounts& rows)
{
    std::string note = counted(rows.read, "row", "rows") + " read, " + std::to_string(rows.leftOut()) + " left out";
    const char* separator = " (";
    for (const auto& [reason, count] : rows.reasons())
        note += std::exchange(separator, ", ") + reason + ": " + std::to_string(count);
    note += rows.reasons().empty() ? "" : ")";
    for (const RowCounts::Gap& gap : rows.gaps)
        note += ", " + inQuotes(gap.test) + " missing in " + std::to_string(gap.rows());
    return note;
}

} // namespace vexroc
