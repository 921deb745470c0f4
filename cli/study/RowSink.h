#pragma once

#include "cli/words/MissingWords.h"
#include "cli/words/Numbers.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vexroc {

/// A cell as its source holds it. Delimited text knows texts only; a database also knows numbers, and no value at all.
using Cell = std::variant<std::monostate, std::string_view, double, std::int64_t, bool>;

// What a cell means, whatever its source. A text is missing, or a number, as words/Numbers.h says; NaN is missing;
// true is 1.

/// Is it NULL or NaN, which no text stands for?
bool hasNoText(const Cell& cell) noexcept;
/// Is it missing in a column of numbers?
bool isMissing(const Cell& cell, const MissingWords& words);
/// The number that the cell is, a text in that form; integers beyond 2^53 round to the nearest double, as their digits
/// in a text do.
std::optional<double> numberIn(const Cell& cell, const NumberForm& form);
/// The cell as a text: a number in its shortest digits, an integer in all of them, "true" or "false".
std::string textOf(const Cell& cell);

/// What a source says of its columns before its rows.
struct InputHeader {
    std::string source; ///< how messages call the input
    std::vector<std::string> columns = {};
    std::string place;       ///< where the columns are named: "data.csv, line 1"
    std::string collection;  ///< what they are named in: "the header"
    std::string hint = {};   ///< what may be wrong when a column is not among them
    NumberForm numbers = {}; ///< in texts
};

/// Takes the rows of an input, whatever its source.
///
/// Life: begin once, then per row one take for each wanted cell and endRow.
class RowSink {
public:
    RowSink() = default;
    virtual ~RowSink() = default;
    RowSink(const RowSink&) = delete;
    RowSink& operator=(const RowSink&) = delete;

    /// The positions of the columns whose cells are wanted, ascending. Throws an input error when a column that is
    /// needed is not there.
    virtual std::vector<std::size_t> begin(const InputHeader& header) = 0;
    /// A cell of a wanted column. False when it is neither a number nor missing and has to be, or a label that is not
    /// UTF-8: the source, which knows the place, then ends with an error.
    [[nodiscard]] virtual bool take(std::size_t column, const Cell& cell) = 0;
    virtual void endRow() { ++rows_; }
    [[nodiscard]] std::size_t rows() const noexcept { return rows_; }

private:
    std::size_t rows_ = 0;
};

/// "data.csv, line 2, column 'age': 'x' is neither a number nor missing", and what to do. The form of numbers is one
/// that options chose; none where there is no choice.
std::string badCellMessage(const std::string& place, const std::string& column, std::string_view cell,
                           const std::string& advice, const std::optional<NumberForm>& form = std::nullopt);

} // namespace vexroc
