#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// Bytes of the longest cell that is read: a quote that nobody closed must not fill the memory.
constexpr std::size_t longestCell = std::size_t{16} << 20;

/// Length of the front of the text up to its last line end outside quotes, which is whole rows when a row begins the
/// text; 0 without such an end. `insideQuotes` says whether the text begins inside quotes, and then whether it ends so.
std::size_t lengthOfWholeRows(std::string_view text, bool& insideQuotes) noexcept;

/// Counts lines. Those that end with LF, or CRLF, count in any case; a lone CR counts when it ends a row.
class LineCount {
public:
    explicit LineCount(std::size_t firstLine) noexcept : line_(firstLine) {}
    [[nodiscard]] std::size_t current() const noexcept { return line_ + rowsInLine_; }
    void endRow() noexcept { ++rowsInLine_; }
    void feed() noexcept
    {
        line_ += std::max<std::size_t>(rowsInLine_, 1);
        rowsInLine_ = 0;
    }

private:
    std::size_t line_;
    std::size_t rowsInLine_ = 0; ///< rows ended since the last LF
};

/// Takes a run of whole rows apart: finds the cells, and turns those that are asked for into texts.
///
/// Life: next leads to the first row, then to each one behind it. It knows its run alone, so that several runs of a
/// text can be taken apart side by side; lines are counted from where `lines` says that the run begins.
class RowSplitter {
public:
    enum class Fault {
        none,
        strayQuote, ///< a quote inside a plain cell, or text behind a closing quote
        openQuote,  ///< the run ends inside a quoted cell
        zeroByte,
        longCell,
    };

    /// The run is empty or ends with CR or LF. Of each row the first `mostCells` cells are kept.
    RowSplitter(std::string_view run, char delimiter, LineCount lines, std::size_t mostCells);

    /// Leads to the next row that is not blank. False at the end of the run and at a fault.
    bool next();

    /// Cells of the row, those not kept as well; at a fault, those before it.
    [[nodiscard]] std::size_t cellCount() const noexcept { return count_; }
    /// The text of a kept cell; valid until the next call.
    [[nodiscard]] std::string_view cell(std::size_t index);
    [[nodiscard]] std::size_t rowLine() const noexcept { return rowStart_.current(); }
    [[nodiscard]] std::size_t cellLine(std::size_t index) const noexcept;

    [[nodiscard]] Fault fault() const noexcept { return fault_; }
    [[nodiscard]] std::size_t faultLine() const noexcept { return faultLine_; }
    /// What stands behind the row, and where its lines are.
    [[nodiscard]] std::string_view rest() const noexcept { return {next_, static_cast<std::size_t>(end_ - next_)}; }
    [[nodiscard]] LineCount lines() const noexcept { return lines_; }

private:
    enum class CellForm : unsigned char { plain, quoted, withQuotesInside };
    struct RawCell {
        const char* begin; ///< behind the blanks and the quote in front of it
        const char* end;   ///< its closing quote, or what ends a plain cell
        CellForm form;
    };
    enum ByteKind : unsigned char { ordinary, blank, special };

    [[nodiscard]] ByteKind kindOf(char c) const noexcept { return kinds_[static_cast<unsigned char>(c)]; }
    [[nodiscard]] const char* behindBlanks(const char* text) const noexcept;
    bool skipBlankLines();
    bool takeCell();
    bool takeQuotedCell();
    bool keep(const RawCell& cell, std::size_t line);
    bool fail(Fault fault, std::size_t line);

    std::array<ByteKind, 256> kinds_{};
    char delimiter_;
    std::size_t mostCells_;
    const char* next_;
    const char* end_;
    LineCount lines_;

    LineCount rowStart_;
    const char* rowBegin_ = nullptr;
    std::size_t count_ = 0;
    std::vector<RawCell> cells_;
    std::string unescaped_; ///< the cell asked for last, when it holds quotes
    Fault fault_ = Fault::none;
    std::size_t faultLine_ = 0;
};

} // namespace vexroc
