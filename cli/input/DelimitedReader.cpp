#include "cli/input/DelimitedReader.h"

#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <exception>
#include <new>
#include <vector>

namespace vexroc {

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;
constexpr std::size_t longestHeader = std::size_t{16} << 20;
constexpr std::array delimiters{',', '\t', ';'};

/// Takes text line by line, finds the cells and hands them to the sink.
///
/// Lines without quotes are split here; the others, and lines that two blocks share, go through libcsv, which knows
/// what quotes mean. libcsv is C: what a callback throws is kept in failure_ and thrown again once it has returned.
class Parser {
public:
    /// The text that is fed begins with that line of the source.
    Parser(const std::string& source, std::size_t firstLine, char delimiter, char decimal, RowSink& sink)
        : source_(source), delimiter_(delimiter), decimal_(decimal), sink_(sink), line_(firstLine)
    {
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
        mayHoldZeros_ = text.find('\0') != std::string_view::npos; // one look at the block spares one at each character
        while (!text.empty()) {
            const std::size_t lineEnd = text.find('\n');
            const bool wholeLine = lineEnd != std::string_view::npos;
            const std::string_view piece = text.substr(0, wholeLine ? lineEnd + 1 : lineEnd);
            if (!(wholeLine && takePlainLine(piece.substr(0, lineEnd))))
                feedPiece(piece);
            text.remove_prefix(piece.size());
        }
    }

    void finish()
    {
        if (csv_fini(&parser_, onCell, onRow, this) != 0)
            throw at(cellLine_, "the text ends inside a quoted cell that begins here; close the double quote");
        rethrowFailure();
        if (!headerDone_)
            throw inputError(source_ + " is empty: a header row with column names and rows of data are expected");
        if (rows_ == 0)
            throw inputError(source_ + " has a header row but no rows of data");
    }

private:
    /// True, and the line is dealt with, when it stands between rows and every CR in it belongs to its end.
    bool takePlainLine(std::string_view line)
    {
        if (!betweenRows() || !headerDone_ || mayHoldZeros_)
            return false;
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!split(line))
            return false;
        cellLine_ = currentLine();
        const bool blank = plainCells_.size() == 1 && plainCells_.front().empty();
        for (std::size_t cell = 0; !blank && cell < plainCells_.size(); ++cell)
            takeCell(plainCells_[cell]);
        if (!blank)
            endRow();
        endLine();
        return true;
    }

    /// Fills plainCells_. False for a line with quotes or CR.
    bool split(std::string_view line)
    {
        plainCells_.clear();
        const char* const end = line.data() + line.size();
        const char* begin = line.data();
        for (const char* c = begin; c != end; ++c) {
            if (*c == delimiter_) {
                plainCells_.push_back(trimmed({begin, static_cast<std::size_t>(c - begin)}));
                begin = c + 1;
            } else if (*c == '"' || *c == '\r') {
                return false;
            }
        }
        plainCells_.push_back(trimmed({begin, static_cast<std::size_t>(end - begin)}));
        return true;
    }

    /// Part of one line; libcsv reports no positions, so the lines are counted here.
    void feedPiece(std::string_view piece)
    {
        if (betweenRows())
            cellLine_ = currentLine();
        // What stands before a zero byte is read first: its faults come first, however the text is cut.
        const std::size_t zero = mayHoldZeros_ ? piece.find('\0') : std::string_view::npos;
        const std::string_view sound = piece.substr(0, zero);
        const std::size_t parsed = csv_parse(&parser_, sound.data(), sound.size(), onCell, onRow, this);
        rethrowFailure();
        if (parsed != sound.size())
            throw syntaxError();
        if (sound.size() != piece.size())
            throw at(currentLine(), "a zero byte in the text; the file is damaged, or not text in UTF-8");
        if (piece.back() == '\n')
            endLine();
    }

    void endLine() noexcept
    {
        line_ += std::max<std::size_t>(rowsInLine_, 1);
        rowsInLine_ = 0;
    }

    [[nodiscard]] bool betweenRows() const noexcept
    {
        constexpr int rowNotBegun = 0; // state of a libcsv parser
        return parser_.pstate == rowNotBegun;
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
        if (wanted_[cells_] && !sink_.take(cells_, cell) && badCell_.empty())
            badCell_ = badCellMessage(place(cellLine_), header_[cells_], cell,
                                      "write a number, or leave the cell empty", decimal_);
    }

    void endRow()
    {
        if (!headerDone_) {
            beginRows();
        } else {
            checkRow();
            sink_.endRow();
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
            throw at(rowLine_,
                     "the row has " + std::to_string(cells_) + (cells_ == 1 ? " cell" : " cells") + ", the header has "
                         + std::to_string(header_.size())
                         + "; give every row one cell per column, in double quotes where it holds " + delimiterName());
        if (!badCell_.empty())
            throw inputError(badCell_);
    }

    void beginRows()
    {
        const bool onlyNumbers =
            std::ranges::all_of(header_, [&](const auto& cell) { return parseNumber(cell, decimal_).has_value(); });
        wanted_ = sink_.begin(
            {.source = source_,
             .columns = header_,
             .place = place(rowLine_),
             .collection = "the header",
             .hint = onlyNumbers ? ". This line holds numbers only: a header row with column names may be missing" : "",
             .decimal = decimal_});
        headerDone_ = true;
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
    char decimal_;
    RowSink& sink_;
    csv_parser parser_{};
    std::exception_ptr failure_;

    std::vector<std::string> header_;
    std::vector<bool> wanted_; ///< parallel to header_
    bool headerDone_ = false;
    bool mayHoldZeros_ = false; ///< the text that is being fed
    std::size_t rows_ = 0;
    std::vector<std::string_view> plainCells_; ///< of the current line
    std::string badCell_;                      ///< what is wrong with a cell of the current row

    std::size_t cells_ = 0;      ///< of the current row, so far
    std::size_t line_;           ///< lines ended by LF so far, plus one
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

/// The front of a source, up to some point behind the header.
struct Front {
    std::string text; ///< without a byte order mark and a line "sep=;"
    std::size_t firstLine = 1;
    std::optional<char> delimiter; ///< that of such a line
};

Front frontOf(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    constexpr std::string_view separator = "sep=";
    Front front;
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    const bool isSeparator = text.starts_with(separator) && headerEnd(text) == separator.size() + 2
        && std::ranges::find(delimiters, text[separator.size()]) != delimiters.end();
    if (isSeparator) {
        front.delimiter = text[separator.size()];
        front.firstLine = 2;
        text.remove_prefix(headerEnd(text));
        if (text.starts_with('\n')) // of CRLF
            text.remove_prefix(1);
    }
    front.text = text;
    return front;
}

Front readFront(ByteSource& source)
{
    std::string text;
    std::size_t length = 0;
    do {
        const std::size_t before = text.size();
        text.resize(before + blockSize);
        length = source.read(std::span(text).subspan(before));
        text.resize(before + length);
    } while (length > 0 && text.size() < longestHeader && headerEnd(frontOf(text).text) == std::string::npos);
    return frontOf(text);
}

/// Throws for what is known by its first bytes as something else.
void requireText(const std::string& name, std::string_view front)
{
    struct Known {
        std::string_view front;
        const char* message;
    };
    using namespace std::string_view_literals;
    constexpr std::array known{
        Known{"\xFD"
              "7zXZ"sv,
              "is packed by xz; unpack it: xz -dc FILE | vexroc COMMAND - ..."},
        Known{"BZh"sv, "is packed by bzip2; unpack it: bzip2 -dc FILE | vexroc COMMAND - ..."},
        Known{"\x1F\x8B"sv, "is packed by gzip twice; unpack it once"},
        Known{"\x28\xB5\x2F\xFD"sv, "is packed by zstd twice; unpack it once"},
        Known{"SQLite format 3"sv, "is an SQLite database; read it with --sqlite FILE and --table NAME or --query SQL"},
        Known{"PK\x03\x04"sv, "is a spreadsheet or a ZIP archive; save the table as CSV, or unpack the archive"},
    };
    for (const auto& [magic, message] : known)
        if (front.starts_with(magic))
            throw inputError(name + " " + message);
}

} // namespace

void readDelimited(ByteSource& source, const TextForm& form, RowSink& sink)
{
    const Front front = readFront(source);
    requireText(source.name(), front.text);
    const std::string_view header = std::string_view(front.text).substr(0, headerEnd(front.text));
    if (header.find('\0') != std::string_view::npos)
        throw inputError(source.name() + " is not text in UTF-8: its first line holds a zero byte; save it as UTF-8");
    const std::optional<char> delimiter = form.delimiter ? form.delimiter : front.delimiter;
    Parser parser(source.name(), front.firstLine, delimiter ? *delimiter : detectDelimiter(header), form.decimal, sink);
    parser.feed(front.text);
    std::vector<char> block(blockSize);
    while (const std::size_t length = source.read(block))
        parser.feed({block.data(), length});
    parser.finish();
}

} // namespace vexroc
