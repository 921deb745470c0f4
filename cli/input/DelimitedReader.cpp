#include "cli/input/DelimitedReader.h"

#include "cli/Failure.h"
#include "cli/text/Words.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <exception>
#include <limits>
#include <new>
#include <unordered_map>

namespace vexroc {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;
constexpr std::size_t longestHeader = std::size_t{16} << 20;
constexpr std::array delimiters{',', '\t', ';'};

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
};

/// Fills one column.
class ColumnFiller {
public:
    explicit ColumnFiller(ColumnRequest request, bool requested) : requested_(requested)
    {
        column_.request = std::move(request);
    }

    /// False, and nothing is stored, for a cell that the column's kind does not allow. A column that nobody requested
    /// takes such a cell and is given up.
    bool append(std::string_view cell)
    {
        if (givenUp_)
            return true;
        const bool fits = column_.request.kind == ColumnKind::numbers ? appendNumber(cell) : appendLabel(cell);
        if (fits || requested_)
            return fits;
        column_.numbers = {};
        return givenUp_ = true;
    }
    [[nodiscard]] bool isKept() const noexcept { return requested_ || (!givenUp_ && numberSeen_); }
    [[nodiscard]] bool isRequested() const noexcept { return requested_; }
    [[nodiscard]] const ColumnRequest& request() const noexcept { return column_.request; }
    DataColumn take() { return std::move(column_); }

private:
    bool appendNumber(std::string_view cell)
    {
        const std::optional<double> number = parseNumber(cell);
        if (!number && !isMissingWord(cell))
            return false;
        numberSeen_ = numberSeen_ || number.has_value();
        column_.numbers.push_back(number.value_or(std::numeric_limits<double>::quiet_NaN()));
        return true;
    }

    bool appendLabel(std::string_view cell)
    {
        column_.labels.push_back(isMissingWord(cell) ? DataColumn::missingLabel : labelOf(cell));
        return true;
    }

    std::int32_t labelOf(std::string_view cell)
    {
        if (const auto known = labelIndex_.find(cell); known != labelIndex_.end())
            return known->second;
        const auto label = static_cast<std::int32_t>(column_.labelTexts.size());
        column_.labelTexts.emplace_back(cell);
        labelIndex_.emplace(cell, label);
        return label;
    }

    DataColumn column_;
    bool requested_;
    bool givenUp_ = false;
    bool numberSeen_ = false;
    std::unordered_map<std::string, std::int32_t, TextHash, std::equal_to<>> labelIndex_;
};

/// Takes text line by line, finds the cells through libcsv and hands them to the fillers.
///
/// libcsv is C: what a callback throws is kept in failure_ and thrown again once libcsv has returned.
class Parser {
public:
    Parser(const std::string& source, std::span<const ColumnRequest> requests, OtherColumns others, char delimiter)
        : source_(source), delimiter_(delimiter), others_(others)
    {
        for (const ColumnRequest& request : requests)
            if (std::ranges::find(fillers_, request, &ColumnFiller::request) == fillers_.end())
                fillers_.emplace_back(request, true);
        if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0)
            throw std::bad_alloc();
        csv_set_delim(&parser_, static_cast<unsigned char>(delimiter));
        csv_set_blk_size(&parser_, std::size_t{16} << 10);
    }
    ~Parser() { csv_free(&parser_); }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    void feed(std::string_view text)
    {
        while (!text.empty()) {
            const std::size_t lineEnd = text.find('\n');
            const std::string_view piece = text.substr(0, lineEnd == std::string_view::npos ? lineEnd : lineEnd + 1);
            feedPiece(piece);
            text.remove_prefix(piece.size());
        }
    }

    DataTable finish()
    {
        if (csv_fini(&parser_, onCell, onRow, this) != 0)
            throw at(cellLine_, "the text ends inside a quoted cell that begins here; close the double quote");
        rethrowFailure();
        if (!headerDone_)
            throw inputError(source_ + " is empty: a header row with column names and rows of data are expected");
        if (rows_ == 0)
            throw inputError(source_ + " has a header row but no rows of data");
        DataTable table{.source = source_, .columns = {}, .rows = rows_};
        for (ColumnFiller& filler : fillers_) {
            if (!filler.isKept())
                continue;
            if (!filler.isRequested() && std::ranges::count(header_, filler.request().name) > 1)
                throw inputError(source_ + ": " + repeatedName(filler.request().name));
            table.columns.push_back(filler.take());
        }
        return table;
    }

private:
    /// Part of one line; libcsv reports no positions, so the lines are counted here.
    void feedPiece(std::string_view piece)
    {
        constexpr int rowNotBegun = 0; // state of a libcsv parser between rows
        if (parser_.pstate == rowNotBegun)
            cellLine_ = currentLine();
        const std::size_t parsed = csv_parse(&parser_, piece.data(), piece.size(), onCell, onRow, this);
        rethrowFailure();
        if (parsed != piece.size())
            throw syntaxError();
        if (piece.back() == '\n') {
            line_ += std::max<std::size_t>(rowsInLine_, 1);
            rowsInLine_ = 0;
        }
    }

    /// Rows that end with a lone CR share what feed takes for a line.
    [[nodiscard]] std::size_t currentLine() const noexcept { return line_ + rowsInLine_; }

    static void onCell(void* text, std::size_t length, void* parser) noexcept
    {
        auto* const self = static_cast<Parser*>(parser);
        self->guarded([&] { self->takeCell({static_cast<const char*>(text), length}); });
    }

    static void onRow(int, void* parser) noexcept
    {
        auto* const self = static_cast<Parser*>(parser);
        self->guarded([&] { self->endRow(); });
    }

    template <class Step>
    void guarded(Step step) noexcept
    {
        if (failure_)
            return;
        try {
            step();
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    void rethrowFailure() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
    }

    void takeCell(std::string_view cell)
    {
        if (cells_ == 0)
            rowLine_ = cellLine_;
        if (!headerDone_)
            header_.emplace_back(cell);
        else if (cells_ < header_.size())
            store(cell);
        ++cells_;
        cellLine_ = currentLine();
    }

    void store(std::string_view cell)
    {
        for (ColumnFiller* const filler : fillersOf_[cells_])
            if (!filler->append(cell) && badCell_.empty())
                badCell_ = describeBadCell(cell);
    }

    void endRow()
    {
        if (!headerDone_) {
            bindColumns();
            headerDone_ = true;
        } else {
            checkRow();
            ++rows_;
        }
        cells_ = 0;
        ++rowsInLine_;
        cellLine_ = currentLine();
    }

    void checkRow() const
    {
        // First: in a row of the wrong length a cell that looks wrong is often only a shifted one.
        if (cells_ != header_.size())
            throw at(rowLine_, "the row has " + std::to_string(cells_) + (cells_ == 1 ? " cell" : " cells")
                                   + ", the header has " + std::to_string(header_.size())
                                   + "; give every row one cell per column, in double quotes where it holds "
                                   + delimiterName());
        if (!badCell_.empty())
            throw inputError(badCell_);
        if (rows_ == static_cast<std::size_t>(std::numeric_limits<int>::max()))
            throw at(rowLine_, "more than " + std::to_string(rows_) + " rows of data; split the data");
    }

    void bindColumns()
    {
        std::vector<std::size_t> positions; // parallel to fillers_
        for (const ColumnFiller& filler : fillers_)
            positions.push_back(positionOf(filler.request().name));
        for (std::size_t column = 0; others_ == OtherColumns::numeric && column < header_.size(); ++column) {
            if (std::ranges::find(positions, column) != positions.end())
                continue;
            fillers_.emplace_back(ColumnRequest{header_[column], ColumnKind::numbers}, false);
            positions.push_back(column);
        }
        fillersOf_.resize(header_.size());
        for (std::size_t i = 0; i < fillers_.size(); ++i)
            fillersOf_[positions[i]].push_back(&fillers_[i]);
    }

    [[nodiscard]] std::size_t positionOf(const std::string& name) const
    {
        const auto found = std::ranges::find(header_, name);
        if (found == header_.end())
            throw unknownColumn(name);
        if (std::find(found + 1, header_.end(), name) != header_.end())
            throw at(rowLine_, repeatedName(name));
        return static_cast<std::size_t>(found - header_.begin());
    }

    static std::string repeatedName(const std::string& name)
    {
        return "the column name " + inQuotes(name) + " occurs more than once; rename one of them";
    }

    [[nodiscard]] Failure unknownColumn(const std::string& name) const
    {
        std::string message = "no column " + inQuotes(name) + " in the header";
        if (const std::vector<std::string> near = nearWords(name, header_); !near.empty())
            message += "; did you mean " + listed(near, near.size()) + "?";
        else
            message += "; its columns are " + listed(header_, 8);
        if (std::ranges::all_of(header_, [](const std::string& cell) { return parseNumber(cell).has_value(); }))
            message += ". This line holds numbers only: a header row with column names may be missing";
        return at(rowLine_, message);
    }

    [[nodiscard]] std::string describeBadCell(std::string_view cell) const
    {
        std::string message = place(cellLine_) + ", column " + inQuotes(header_[cells_]) + ": " + inQuotes(cell)
            + " is neither a number nor missing; write a number, or leave the cell empty";
        std::string withPoint(cell);
        std::ranges::replace(withPoint, ',', '.');
        if (withPoint != cell && parseNumber(withPoint))
            message += " (the decimal sign is a point)";
        return message;
    }

    [[nodiscard]] Failure syntaxError()
    {
        if (csv_error(&parser_) != CSV_EPARSE)
            throw std::bad_alloc();
        const bool columnKnown = headerDone_ && cells_ < header_.size();
        const std::string column = columnKnown ? ", column " + inQuotes(header_[cells_]) : "";
        return inputError(place(cellLine_) + column
                          + ": a double quote inside a cell without quotes, or text after a closing quote; put the "
                            "whole cell in double quotes and double those inside");
    }

    [[nodiscard]] std::string place(std::size_t line) const { return source_ + ", line " + std::to_string(line); }
    [[nodiscard]] Failure at(std::size_t line, const std::string& message) const
    {
        return inputError(place(line) + ": " + message);
    }
    [[nodiscard]] std::string delimiterName() const
    {
        switch (delimiter_) {
        case ',': return "a comma";
        case ';': return "a semicolon";
        case '\t': return "a tab";
        }
        return inQuotes({&delimiter_, 1});
    }

    std::string source_;
    char delimiter_;
    OtherColumns others_;
    std::vector<ColumnFiller> fillers_;
    csv_parser parser_{};
    std::exception_ptr failure_;

    std::vector<std::string> header_;
    std::vector<std::vector<ColumnFiller*>> fillersOf_; ///< parallel to header_
    bool headerDone_ = false;
    std::size_t rows_ = 0;
    std::string badCell_; ///< what is wrong with a cell of the current row

    std::size_t cells_ = 0;      ///< of the current row, so far
    std::size_t line_ = 1;       ///< lines ended by LF so far, plus one
    std::size_t rowsInLine_ = 0; ///< rows ended since the last LF
    std::size_t rowLine_ = 1;    ///< where the current row begins
    std::size_t cellLine_ = 1;   ///< where the current cell begins
};

/// End of the first line that is not blank, its line end included, quotes respected; npos when it is not all there.
std::size_t headerEnd(std::string_view text)
{
    bool insideQuotes = false;
    bool blank = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool lineEnd = !insideQuotes && (text[i] == '\n' || text[i] == '\r');
        if (lineEnd && !blank)
            return i + 1;
        insideQuotes = insideQuotes != (text[i] == '"');
        blank = blank && (lineEnd || text[i] == ' ');
    }
    return std::string_view::npos;
}

char detectDelimiter(std::string_view header)
{
    std::array<std::size_t, delimiters.size()> counts{};
    bool insideQuotes = false;
    for (const char c : header) {
        insideQuotes = insideQuotes != (c == '"');
        for (std::size_t i = 0; i < delimiters.size(); ++i)
            counts[i] += !insideQuotes && c == delimiters[i] ? 1 : 0;
    }
    return delimiters[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

/// The front of the source up to some point behind the header, without a byte order mark.
std::string readFront(ByteSource& source)
{
    std::string front;
    std::size_t length = 0;
    do {
        const std::size_t before = front.size();
        front.resize(before + blockSize);
        length = source.read(std::span(front).subspan(before));
        front.resize(before + length);
    } while (length > 0 && front.size() < longestHeader && headerEnd(front) == std::string::npos);
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (front.starts_with(byteOrderMark))
        front.erase(0, byteOrderMark.size());
    return front;
}

} // namespace

DataTable readDelimited(ByteSource& source, std::span<const ColumnRequest> requests, std::optional<char> delimiter,
                        OtherColumns others)
{
    const std::string front = readFront(source);
    const std::string_view header = std::string_view(front).substr(0, headerEnd(front));
    if (header.find('\0') != std::string_view::npos)
        throw inputError(source.name() + " is not text in UTF-8: its first line holds a zero byte; save it as UTF-8");
    Parser parser(source.name(), requests, others, delimiter ? *delimiter : detectDelimiter(header));
    parser.feed(front);
    std::vector<char> block(blockSize);
    while (const std::size_t length = source.read(block))
        parser.feed({block.data(), length});
    return parser.finish();
}

} // namespace vexroc
