#include "cli/study/CaseColumns.h"

#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace vexroc {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// The code of each row, from its match; other values share one code.
std::vector<double> codesOf(const std::vector<Match>& matches, double first, double second, double other)
{
    std::vector<double> codes;
    codes.reserve(matches.size());
    for (const Match match : matches)
        codes.push_back(match == missingValue ? missing : match == otherValue ? other : match == 0 ? first : second);
    return codes;
}

bool isZeroOrOne(const std::string& value, char decimal)
{
    const std::optional<double> number = parseNumber(value, decimal);
    return number == 0.0 || number == 1.0;
}

/// The numbers that the labels of a column spell.
std::vector<double> numbersIn(const DataColumn& column)
{
    std::vector<double> ofLabel;
    for (const std::string& text : column.labelTexts)
        ofLabel.push_back(parseNumber(text, column.decimal).value_or(missing));
    std::vector<double> numbers;
    for (const std::int32_t label : column.labels)
        numbers.push_back(label == DataColumn::missingLabel ? missing : ofLabel[static_cast<std::size_t>(label)]);
    return numbers;
}

} // namespace

CaseColumns::CaseColumns(const DataTable& table, const Question& question)
    : table_(table), state_(codesOf(matchRows(table, question.state), positiveState, 0.0, 0.0))
{
    if (question.grouping)
        addGroup(*question.grouping);
    if (!question.weight.empty())
        weight_ = table.numbers(question.weight);
}

void CaseColumns::addGroup(const Grouping& grouping)
{
    switch (grouping.by) {
    case Grouping::By::twoValues: return addTwoValues(grouping.column);
    case Grouping::By::selected: return addSelected(grouping.column, grouping.selected);
    case Grouping::By::cut:
    case Grouping::By::midPoint: break;
    }
    group_ = table_.numbers(grouping.column);
}

/// Numbers where the column holds nothing but 0 and 1, else the two words in ascending order.
void CaseColumns::addTwoValues(const std::string& name)
{
    const DataColumn& column = table_.column(name, ColumnKind::labels);
    const std::vector<std::string> values = distinctValues(column);
    const auto isCode = [&](const std::string& value) { return isZeroOrOne(value, column.decimal); };
    if (!values.empty() && std::ranges::all_of(values, isCode)) {
        codes_ = numbersIn(column);
        group_ = codes_;
        return;
    }
    if (values.size() != 2)
        throw inputError(table_.source + ": the group column " + inQuotes(name) + " holds "
                         + (values.empty() ? "missing cells only" : listed(values, 6))
                         + "; it needs two values: pick them with --select, or split numbers with --cut or "
                           "--mid-point");
    addSelected(name, values);
}

void CaseColumns::addSelected(const std::string& column, const std::vector<std::string>& values)
{
    codes_ = codesOf(matchRows(table_, {column, values}), firstGroup, secondGroup, otherGroup);
    group_ = codes_;
    groupWords_ = values;
}

} // namespace vexroc
