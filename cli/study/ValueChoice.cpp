#include "cli/study/ValueChoice.h"

#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <optional>

namespace vexroc {

namespace {

bool sameValue(std::string_view cell, std::string_view value, char decimal)
{
    if (cell == value)
        return true;
    const std::optional<double> cellNumber = parseNumber(cell, decimal);
    return cellNumber && cellNumber == parseNumber(value, decimal);
}

Failure valueNotFound(const DataTable& data, const DataColumn& column, const std::string& value)
{
    const std::string where = data.source + ": column " + inQuotes(column.request.name);
    if (column.labelTexts.empty())
        return inputError(where + " holds missing cells only");
    return inputError(where + " never holds " + inQuotes(value) + "; it holds " + listed(column.labelTexts, 6));
}

/// The answer for each distinct text of the column.
std::vector<Match> matchLabels(const DataTable& data, const DataColumn& column, const ValueChoice& choice)
{
    std::vector<Match> matches(column.labelTexts.size(), otherValue);
    for (std::size_t v = 0; v < choice.values.size(); ++v) {
        bool found = false;
        for (std::size_t label = 0; label < matches.size(); ++label) {
            if (!sameValue(column.labelTexts[label], choice.values[v], column.decimal))
                continue;
            if (matches[label] != otherValue)
                throw usageError("the values " + listed(choice.values, choice.values.size()) + " of column "
                                 + inQuotes(choice.column) + " are the same; name different ones");
            matches[label] = static_cast<Match>(v);
            found = true;
        }
        if (!found)
            throw valueNotFound(data, column, choice.values[v]);
    }
    return matches;
}

} // namespace

std::vector<Match> matchRows(const DataTable& data, const ValueChoice& choice)
{
    const DataColumn& column = data.column(choice.column, ColumnKind::labels);
    const std::vector<Match> labelMatches = matchLabels(data, column, choice);
    std::vector<Match> matches;
    matches.reserve(column.labels.size());
    for (const std::int32_t label : column.labels)
        matches.push_back(label == DataColumn::missingLabel ? missingValue
                                                            : labelMatches[static_cast<std::size_t>(label)]);
    return matches;
}

bool LessValue::operator()(const std::string& a, const std::string& b) const
{
    const std::optional<double> x = parseNumber(a, decimal);
    const std::optional<double> y = parseNumber(b, decimal);
    if (x && y)
        return *x < *y;
    return x.has_value() != y.has_value() ? x.has_value() : a < b;
}

std::vector<std::string> distinctValues(const DataColumn& column)
{
    std::vector<std::string> values = column.labelTexts;
    const LessValue lessValue{column.decimal};
    std::ranges::stable_sort(values, lessValue);
    const auto same = [&](const std::string& a, const std::string& b) { return !lessValue(a, b) && !lessValue(b, a); };
    values.erase(std::unique(values.begin(), values.end(), same), values.end());
    return values;
}

} // namespace vexroc
