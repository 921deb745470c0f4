#pragma once

#include "cli/output/Table.h"

#include <string>

namespace vexroc {

// A table in each form that it is written in. Each appends to `out`.

/// For people: titles and rounded numbers in aligned columns, in lines of so many places: a wider table becomes several
/// panels below each other, long names keep their ends.
void writeText(const Table& table, std::size_t width, std::string& out);
/// Comma-separated values with a header row and exact numbers; NA for NaN, nothing where there is no cut-off.
void writeCsv(const Table& table, std::string& out);
/// An array of objects with exact numbers; null for NaN.
void writeJson(const Table& table, std::string& out);
/// A table of a page, with its title as caption where there is one.
void writeHtml(const Table& table, std::string_view title, std::string& out);

/// Tables of a paper's source, in panels as for people. Cells and caption are text: nothing in them is markup.
void writeMarkdown(const Table& table, std::string_view caption, std::size_t width, std::string& out);
/// A float of its own, for the package booktabs.
void writeLatex(const Table& table, std::string_view caption, std::size_t width, std::string& out);

/// A cell as people are shown it.
std::string forPeople(const Table::Value& value, CellRole role);

/// How many places visible text takes in a line of a terminal: two for a wide character, none for a combining one.
std::size_t displayWidth(std::string_view visibleText) noexcept;

} // namespace vexroc
