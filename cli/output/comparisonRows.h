#pragma once

#include "cli/output/Table.h"
#include "cli/study/Results.h"

#include <string_view>
#include <vector>

namespace vexroc {

// A row of a table of comparisons: what is compared, the numbers of its own cases, both areas, then their difference.

/// paired: two tests on the same cases; else a test in two groups.
std::vector<TableColumn> comparisonColumns(bool paired);
std::vector<std::string_view> comparisonNames(const Difference& difference, bool paired);
std::vector<double> comparisonNumbers(const Difference& difference, bool paired);

/// Behind the cases of a test: its area, standard error, p and interval.
std::vector<double> areaNumbers(const Area& area);

} // namespace vexroc
