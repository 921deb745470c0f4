#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vexroc {

enum class OutputFormat { text, csv, json, html };

/// What the cells of a column are; decides how the readable tables (text, html) round them. CSV and JSON never round.
enum class CellRole {
    name,         ///< text
    count,        ///< whole number
    flag,         ///< 1 or 0, for people yes or no
    statistic,    ///< four decimals
    significance, ///< four decimals, or "<0.0001"
    measure,      ///< on the scale of a test variable: eight significant digits
};

/// A number as the readable tables show it; NA for NaN.
std::string readable(double value, CellRole role);

struct TableColumn {
    std::string_view name;  ///< in CSV and JSON
    std::string_view title; ///< in the readable table
    CellRole role;
    int panel = 0; ///< a wide readable table is set as panels below each other; columns of panel 0 stand in each
};

/// Rows of results, held as the text to be written.
class Table {
public:
    using Value = std::variant<std::string_view, double>;

    Table(OutputFormat format, std::span<const TableColumn> columns);

    /// One value per column: text for names, a number for the others. NaN is written as NA, in JSON as null.
    void addRow(std::span<const Value> values);
    void addRow(std::initializer_list<Value> values) { addRow(std::span(values.begin(), values.size())); }
    /// A table without rows that has these columns behind one of names.
    [[nodiscard]] Table behind(const TableColumn& leading) const;
    /// Adds the rows of a table that lacks the first column only; `leading` is in that column of each.
    void append(std::string_view leading, const Table& rows);
    /// Appends header and rows; as JSON an array of objects.
    void write(std::string& out) const;
    [[nodiscard]] std::string str() const;
    /// Appends a table of a page, with its title as caption. Only for OutputFormat::html.
    void writeHtml(std::string_view title, std::string& out) const;

private:
    void addCell(std::string_view text);
    [[nodiscard]] std::string_view cell(std::size_t row, std::size_t column) const;
    [[nodiscard]] std::size_t rows() const noexcept { return ends_.size() / columns_.size(); }
    [[nodiscard]] std::string spelled(const Value& value, CellRole role) const;
    void writeCsv(std::string& out) const;
    void writeJson(std::string& out) const;
    void writePanels(std::string& out) const;
    void writePanel(int panel, std::string& out) const;

    OutputFormat format_;
    std::vector<TableColumn> columns_;
    std::string text_;              ///< all cells, row by row; a curve has millions of them
    std::vector<std::size_t> ends_; ///< where each cell ends in text_
};

} // namespace vexroc
