#include "cli/study/RowsByValue.h"

#include "cli/study/ValueChoice.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <utility>

namespace vexroc {

namespace {

template <class Element>
std::vector<Element> picked(const std::vector<Element>& all, std::span<const std::uint32_t> rows)
{
    std::vector<Element> some;
    if (all.empty()) // of the other kind
        return some;
    some.reserve(rows.size());
    for (const std::uint32_t row : rows)
        some.push_back(all[row]);
    return some;
}

} // namespace

RowsByValue::RowsByValue(DataTable table, const std::string& name) : table_(std::move(table))
{
    const DataColumn& column = table_.column(name, ColumnKind::labels);
    const std::string where = table_.source + ": column " + inQuotes(name);
    if (column.labelTexts.empty())
        throw inputError(where + " holds missing cells only");
    if (column.labelTexts.size() > mostValues)
        throw inputError(where + " holds " + std::to_string(column.labelTexts.size()) + " different values; --by takes "
                         + std::to_string(mostValues) + " at most: a column of sites or years, not of measurements");
    values_ = distinctValues(column);
    sortRows(column);
}

DataTable RowsByValue::rowsOf(std::size_t value) const
{
    const std::span rows = std::span(rows_).subspan(begins_[value], begins_[value + 1] - begins_[value]);
    DataTable some{.source = table_.source, .rows = rows.size()};
    for (const DataColumn& column : table_.columns)
        some.columns.push_back({.request = column.request,
                                .decimal = column.decimal,
                                .numbers = picked(column.numbers, rows),
                                .labels = picked(column.labels, rows),
                                .labelTexts = column.labelTexts});
    return some;
}

/// A counting sort: by value, then as the rows came.
void RowsByValue::sortRows(const DataColumn& column)
{
    std::vector<std::size_t> valueOf; // of each label
    for (const std::string& text : column.labelTexts)
        valueOf.push_back(static_cast<std::size_t>(std::ranges::lower_bound(values_, text, LessValue{column.decimal})
                                                   - values_.begin()));
    const auto forEachRow = [&](auto use) {
        for (std::size_t row = 0; row < column.labels.size(); ++row)
            if (const std::int32_t label = column.labels[row]; label != DataColumn::missingLabel)
                use(valueOf[static_cast<std::size_t>(label)], row);
    };
    begins_.resize(values_.size() + 1);
    forEachRow([&](std::size_t value, std::size_t) { ++begins_[value + 1]; });
    std::partial_sum(begins_.begin(), begins_.end(), begins_.begin());
    rows_.resize(begins_.back());
    std::vector<std::size_t> next = begins_;
    forEachRow([&](std::size_t value, std::size_t row) { rows_[next[value]++] = static_cast<std::uint32_t>(row); });
}

} // namespace vexroc
