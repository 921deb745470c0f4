#include "cli/output/Table.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <stdexcept>

namespace vexroc {

Table::Table(std::span<const TableColumn> columns)
    : columns_(columns.begin(), columns.end()), numbers_(columns.size()), readings_(columns.size()),
      names_(columns.size())
{
}

void Table::addRow(std::span<const Value> values)
{
    if (values.size() != columns_.size())
        throw std::logic_error("a row does not fit the columns of its table");
    for (std::size_t c = 0; c < values.size(); ++c) {
        const auto* const text = std::get_if<std::string_view>(&values[c]);
        if (columns_[c].role == CellRole::name) {
            names_[c].push_back(nameIndex(std::get<std::string_view>(values[c])));
            continue;
        }
        if (columns_[c].role == CellRole::cutOff) {
            const auto& [value, reading] = std::get<CutOffCell>(values[c]);
            numbers_[c].push_back(value);
            readings_[c].push_back(reading);
            continue;
        }
        numbers_[c].push_back(text ? std::numeric_limits<double>::quiet_NaN() : std::get<double>(values[c]));
        if (text)
            textsForNumbers_[{rows_, c}] = nameIndex(*text);
    }
    ++rows_;
}

Table::Value Table::at(std::size_t row, std::size_t column) const
{
    if (columns_[column].role == CellRole::name)
        return std::string_view(texts_[names_[column][row]]);
    if (columns_[column].role == CellRole::cutOff)
        return CutOffCell{numbers_[column][row], readings_[column][row]};
    if (!textsForNumbers_.empty())
        if (const auto text = textsForNumbers_.find({row, column}); text != textsForNumbers_.end())
            return std::string_view(texts_[text->second]);
    return numbers_[column][row];
}

std::uint32_t Table::nameIndex(std::string_view name)
{
    if (const auto known = textIndex_.find(name); known != textIndex_.end())
        return known->second;
    texts_.emplace_back(name);
    return textIndex_.emplace(name, static_cast<std::uint32_t>(texts_.size() - 1)).first->second;
}

std::vector<TableColumn> asPart(int part, std::span<const TableColumn> columns)
{
    std::vector<TableColumn> moved(columns.begin(), columns.end());
    for (TableColumn& column : moved)
        column.part = part;
    return moved;
}

std::vector<TableColumn> joined(std::initializer_list<std::span<const TableColumn>> parts)
{
    std::vector<TableColumn> columns;
    for (const std::span<const TableColumn> part : parts)
        std::ranges::copy(part, std::back_inserter(columns));
    return columns;
}

} // namespace vexroc
