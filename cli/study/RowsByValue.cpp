#include "cli/study/RowsByValue.h"

#include "cli/words/Failure.h"

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

RowsByValue::RowsByValue(DataTable table, const ColumnLabels& labels) : table_(std::move(table))
{
    const std::size_t count = labels.values().size();
    if (count == 0)
        throw inputError(labels.place() + " holds missing cells only");
    if (count > mostValues)
        throw inputError(labels.place() + " holds " + std::to_string(count) + " different values; --by takes "
                         + std::to_string(mostValues) + " at most: a column of sites or years, not of measurements");
    for (const ColumnLabels::Value& value : labels.values())
        values_.push_back(value.text);
    sortRows(labels);
}

DataTable RowsByValue::rowsOf(std::size_t value) const
{
    const std::span rows = std::span(rows_).subspan(begins_[value], begins_[value + 1] - begins_[value]);
    DataTable some{.source = table_.source, .rows = rows.size(), .missingWords = table_.missingWords};
    for (const DataColumn& column : table_.columns)
        some.columns.push_back({.request = column.request,
                                .decimal = column.decimal,
                                .numbers = picked(column.numbers, rows),
                                .labels = picked(column.labels, rows),
                                .labelTexts = column.labelTexts});
    return some;
}

/// A counting sort: by value, then as the rows came.
void RowsByValue::sortRows(const ColumnLabels& labels)
{
    const DataColumn& column = table_.column(labels.column(), ColumnKind::labels);
    const auto forEachRow = [&](auto use) {
        for (std::size_t row = 0; row < column.labels.size(); ++row)
            if (const int value = labels.valueOf(column.labels[row]); value >= 0)
                use(static_cast<std::size_t>(value), row);
    };
    begins_.resize(values_.size() + 1);
    forEachRow([&](std::size_t value, std::size_t) { ++begins_[value + 1]; });
    std::partial_sum(begins_.begin(), begins_.end(), begins_.begin());
    rows_.resize(begins_.back());
    std::vector<std::size_t> next = begins_;
    forEachRow([&](std::size_t value, std::size_t row) { rows_[next[value]++] = static_cast<std::uint32_t>(row); });
}

} // namespace vexroc
