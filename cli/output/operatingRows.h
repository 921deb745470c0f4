#pragma once

#include "cli/output/InferenceDocuments.h"
#include "cli/output/Table.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vexroc {

// Rows of operating points, as several documents show them.

/// Which numbers of a row are shown beside the numbers of cases.
enum class RowDetail { counts, all };

/// The columns behind a cut-off, and their cells. Those of all end with the measures and their limits.
std::vector<TableColumn> rowColumns(const Analysis& analysis, const CurveOptions& how, RowDetail detail);
void addRowCells(const TestResult& test, const CurveOptions& how, const OperatingPoints& points, std::size_t row,
                 RowDetail detail, std::vector<Table::Value>& cells);

/// One cut-off for people, a measure a line.
Document::Part blockOf(const std::string& title, const OperatingPoints& points, std::size_t row);
/// "radius_mean where sex = female, cut-off 15"
std::string blockTitle(const Question& question, std::string_view value, const TestResult& test,
                       const OperatingPoints& points, std::size_t row);

/// Says how the measures and their limits are made.
void addRowMethods(const Analysis& analysis, const CurveOptions& how, Document& document);

} // namespace vexroc
