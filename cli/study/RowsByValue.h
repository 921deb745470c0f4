#pragma once

#include "cli/study/ColumnLabels.h"
#include "cli/study/DataTable.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vexroc {

/// The rows of a table by the values of one of its label columns.
///
/// Values come in ascending order, numbers before words. Rows without a value are left aside.
/// Memory: the table, four bytes per row, and the rows of one value at a time.
/// Failure: throws an input error for labels that hold no value, or so many that it must be another kind of column.
class RowsByValue {
public:
    /// The labels are those of the table.
    RowsByValue(DataTable table, const ColumnLabels& labels);

    [[nodiscard]] const std::vector<std::string>& values() const noexcept { return values_; }
    [[nodiscard]] std::size_t missing() const noexcept { return table_.rows - rows_.size(); }
    /// The rows of one value, in their order. Labels keep their numbers, also those that do not occur there.
    [[nodiscard]] DataTable rowsOf(std::size_t value) const;

    static constexpr std::size_t mostValues = 1000;

private:
    void sortRows(const ColumnLabels& labels);

    DataTable table_;
    std::vector<std::string> values_;
    std::vector<std::uint32_t> rows_; ///< value by value
    std::vector<std::size_t> begins_; ///< where in rows_ each value begins; the end of the last behind them
};

} // namespace vexroc
