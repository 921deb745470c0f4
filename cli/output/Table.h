#pragma once

#include "cli/study/CutOffReading.h"
#include "cli/words/Readable.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vexroc {

struct TableColumn {
    std::string_view name;  ///< in CSV and JSON
    std::string_view title; ///< for people; empty: not for them
    CellRole role;
    int part = 0; ///< for people: columns of one part stay together where a wide table is set as several panels
    bool unlessZero = false; ///< for people only where a number in it is not 0
};

/// A cut-off with what it takes to say it in words.
struct CutOffCell {
    double value;
    CutOffReading reading;
};

/// Rows of results: names and numbers, kept as they are and spelled by whoever writes them, in whatever form.
///
/// Memory: eight bytes for a number, twelve for a cut-off, four for a name, and each name once; a curve has millions of
/// rows.
class Table {
public:
    /// A cell: text for names, cut-offs, a number for the others. A text may stand where a number cannot be told ("more
    /// than").
    using Value = std::variant<std::string_view, double, CutOffCell>;

    explicit Table(std::span<const TableColumn> columns);

    /// One value per column; NaN for what is not known, and for a cut-off where there is none.
    void addRow(std::span<const Value> values);
    void addRow(std::initializer_list<Value> values) { addRow(std::span(values.begin(), values.size())); }

    [[nodiscard]] std::size_t rows() const noexcept { return rows_; }
    [[nodiscard]] std::span<const TableColumn> columns() const noexcept { return columns_; }
    [[nodiscard]] Value at(std::size_t row, std::size_t column) const;

private:
    std::uint32_t nameIndex(std::string_view name);

    std::vector<TableColumn> columns_;
    std::size_t rows_ = 0;
    std::vector<std::vector<double>> numbers_;         ///< per column; empty for names
    std::vector<std::vector<CutOffReading>> readings_; ///< per column of cut-offs
    std::vector<std::vector<std::uint32_t>> names_;    ///< per column of names: index into texts_
    std::vector<std::string> texts_;
    std::map<std::string, std::uint32_t, std::less<>> textIndex_;
    std::map<std::pair<std::size_t, std::size_t>, std::uint32_t> textsForNumbers_; ///< by (row, column); few
};

/// Columns as one part of a wide table.
std::vector<TableColumn> asPart(int part, std::span<const TableColumn> columns);
std::vector<TableColumn> joined(std::initializer_list<std::span<const TableColumn>> parts);

} // namespace vexroc
