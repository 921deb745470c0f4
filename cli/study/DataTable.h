#pragma once

#include "cli/words/MissingWords.h"

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// How the cells of a column are understood.
enum class ColumnKind {
    numbers, ///< every cell is a number or missing
    labels,  ///< every cell is a text; which texts are missing is known when all are read
};

struct ColumnRequest {
    std::string name;
    ColumnKind kind;
    std::string orElse = {}; ///< the column to read where there is none of that name; empty for an error
    friend bool operator==(const ColumnRequest&, const ColumnRequest&) = default;
};

/// One column held in memory; only the members of its kind are filled.
struct DataColumn {
    static constexpr std::int32_t missingLabel = -1; ///< a cell without a text, such as NULL

    ColumnRequest request;
    char decimal = '.';                                 ///< decimal sign of numbers in its cells
    std::vector<double> numbers;                        ///< one per row; NaN where the cell is missing
    std::map<std::string, long long> missingCells = {}; ///< the missing words in it, with their rows
    std::string doubtful = {};           ///< the first cell whose decimal sign may stand between thousands; or none
    std::vector<std::int32_t> labels;    ///< one per row: index into labelTexts, or missingLabel
    std::vector<std::string> labelTexts; ///< the distinct texts, in the order of their first row
};

/// The requested columns of an input, row by row parallel.
struct DataTable {
    std::string source; ///< how messages call the input
    std::vector<DataColumn> columns = {};
    std::size_t rows = 0;
    std::shared_ptr<const MissingWords> missingWords = std::make_shared<MissingWords>();

    [[nodiscard]] bool holds(std::string_view name, ColumnKind kind) const noexcept;
    /// A column that was requested.
    [[nodiscard]] const DataColumn& column(std::string_view name, ColumnKind kind) const;
    [[nodiscard]] std::span<const double> numbers(std::string_view name) const
    {
        return column(name, ColumnKind::numbers).numbers;
    }
};

} // namespace vexroc
