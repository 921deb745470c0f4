#include "cli/input/DelimitedReader.h"

#include "cli/input/RowSplitter.h"
#include "cli/input/TextFront.h"
#include "cli/input/likelyEncoding.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vexroc {

namespace {

/// Text of a source, block by block; what is not taken yet stays in front of the next block.
class TextBlocks {
public:
    explicit TextBlocks(ByteSource& source) : source_(source) {}

    [[nodiscard]] std::string_view text() const noexcept { return {buffer_.data() + begin_, end_ - begin_}; }
    void take(std::size_t length) noexcept { begin_ += length; }

    /// False at the end of the source.
    bool readBlock()
    {
        std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
                  buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
        end_ -= begin_;
        begin_ = 0;
        if (buffer_.size() < end_ + blockSize)
            buffer_.resize(2 * end_ + blockSize);
        const std::size_t length = source_.read(std::span(buffer_).subspan(end_, blockSize));
        end_ += length;
        return length > 0;
    }
    /// Gives text that ends without one a line end.
    void endLine()
    {
        if (end_ == buffer_.size())
            buffer_.push_back('\0');
        buffer_[end_++] = '\n';
    }

private:
    static constexpr std::size_t blockSize = std::size_t{256} << 10;

    ByteSource& source_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

/// What the rows of a text have in common, once its front is known.
struct Dialect {
    std::string source;
    char delimiter;
    const TextForm& form;
    const CallLine& call; ///< for messages

    [[nodiscard]] std::string place(std::size_t line) const { return source + ", line " + std::to_string(line); }
    [[nodiscard]] Failure at(std::size_t line, const std::string& message) const
    {
        return inputError(place(line) + ": " + message);
    }
    [[nodiscard]] std::string delimiterName() const
    {
        switch (delimiter) {
        case ',': return "a comma";
        case ';': return "a semicolon";
        case '\t': return "a tab";
        }
        return inQuotes({&delimiter, 1});
    }
};

/// "line 2, column 'x'" with its cell.
struct CellPlace {
    std::size_t column;
    std::string text; ///< where it is
    std::string cell;
};

std::string megabytes(std::size_t bytes) { return std::to_string(bytes >> 20) + " MB"; }

/// Hands the cells of runs of whole rows, one run after another, to a sink; the first row of all is the header.
class RunReader {
public:
    RunReader(Dialect dialect, std::size_t firstLine, RowSink& sink)
        : dialect_(std::move(dialect)), sink_(sink), lines_(firstLine)
    {
    }

    void read(std::string_view run)
    {
        if (columns_.empty())
            run = readHeader(run);
        RowSplitter rows(run, dialect_.delimiter, lines_, columns_.size());
        while (rows.next())
            handOver(rows);
        end(rows);
    }
    /// Throws for text that ends here: it must have had rows, and no question is open.
    void finish() const
    {
        if (doubtful_)
            throw question();
        if (columns_.empty())
            throw inputError(dialect_.source
                             + " is empty: a header row with column names and rows of data are expected");
        if (sink_.rows() == 0)
            throw inputError(dialect_.source + " has a header row but no rows of data");
    }
    /// What is wrong with a row that is too long; its front is given.
    [[nodiscard]] Failure tooLong(std::string_view front)
    {
        RowSplitter row(front, dialect_.delimiter, lines_, columns_.size());
        row.next();
        const bool isFault = row.fault() != RowSplitter::Fault::none && row.fault() != RowSplitter::Fault::openQuote;
        return isFault
            ? faultOf(row)
            : dialect_.at(row.rowLine(), "the row is longer than " + megabytes(longestRow) + "; use fewer columns");
    }

private:
    /// What stands behind the header.
    std::string_view readHeader(std::string_view run)
    {
        RowSplitter rows(run, dialect_.delimiter, lines_, mostColumns);
        const bool isThere = rows.next();
        end(rows);
        if (isThere)
            begin(rows);
        return rows.rest();
    }

    void begin(RowSplitter& first)
    {
        if (first.cellCount() > mostColumns)
            throw dialect_.at(first.rowLine(),
                              "the header has " + std::to_string(first.cellCount()) + " columns; at most "
                                  + std::to_string(mostColumns) + " can be read");
        const bool isHeader = dialect_.form.firstRow != FirstRow::cases;
        if (dialect_.form.firstRow == FirstRow::notSaid)
            requireNames(first);
        for (std::size_t column = 0; column < first.cellCount(); ++column)
            columns_.push_back(isHeader ? nameIn(first, column) : std::to_string(column + 1));
        const bool anyNumber = std::ranges::any_of(
            columns_, [&](const auto& name) { return parseNumber(name, dialect_.form.numbers).has_value(); });
        wanted_ = sink_.begin({.source = dialect_.source,
                               .columns = columns_,
                               .place = isHeader ? dialect_.place(first.rowLine()) : dialect_.source,
                               .collection = isHeader ? "the header" : "a table with --no-header",
                               .hint = isHeader && anyNumber ? ". If the first row is a case, add --no-header" : "",
                               .numbers = dialect_.form.numbers});
        if (!isHeader)
            handOver(first);
    }

    /// Throws for a first row of numbers only.
    void requireNames(RowSplitter& first) const
    {
        const MissingWords missing;
        bool anyNumber = false;
        for (std::size_t column = 0; column < first.cellCount(); ++column) {
            const bool isNumber = parseNumber(first.cell(column), dialect_.form.numbers).has_value();
            anyNumber = anyNumber || isNumber;
            if (!isNumber && !missing.inTest(first.cell(column)))
                return;
        }
        if (anyNumber)
            throw dialect_.at(first.rowLine(),
                              "the first row holds numbers only. If it is the first case, add --no-header, and the "
                              "columns are called 1, 2, 3 and so on; if these are the names of the columns, add "
                              "--header");
    }

    std::string nameIn(RowSplitter& header, std::size_t column) const
    {
        const std::string_view name = header.cell(column);
        if (!isUtf8(name))
            throw undecodable(dialect_.place(header.rowLine()) + ", column " + std::to_string(column + 1), name);
        return name.empty() ? std::to_string(column + 1) : std::string(name);
    }

    void handOver(RowSplitter& row)
    {
        // First: in a row of the wrong length a cell that looks wrong is often only a shifted one.
        if (row.cellCount() != columns_.size())
            throw wrongLength(row);
        for (const std::size_t column : wanted_)
            if (const std::string_view cell = row.cell(column); !sink_.take(column, cell))
                refuse(row, column);
        sink_.endRow();
    }

    /// Throws for a cell that the sink did not take, unless it may be understood in two ways and the rest of the column
    /// has to tell.
    void refuse(RowSplitter& row, std::size_t column)
    {
        CellPlace place{column, dialect_.place(row.cellLine(column)), std::string(row.cell(column))};
        if (!isUtf8(place.cell))
            throw undecodable(place.text + ", column " + inQuotes(columns_[place.column]), place.cell);
        const NumberForm& numbers = dialect_.form.numbers;
        const bool mayAsk = numbers.decimal == '.' && numbers.thousands == Thousands::notSaid;
        const auto grouped = mayAsk ? groupedNumber(place.cell, Thousands::comma) : std::nullopt;
        if (!grouped || !grouped->isDoubtful())
            throw inputError(badCellMessage(place.text, columns_[place.column], place.cell,
                                            "write a number, or leave the cell empty", numbers));
        if (!doubtful_)
            doubtful_ = std::move(place);
    }

    [[nodiscard]] Failure question() const
    {
        const std::string plain = groupedNumber(doubtful_->cell, Thousands::comma)->plain;
        const std::string asThousands = shortest(*parseNumber(plain));
        const std::string asDecimals = shortest(*parseNumber(doubtful_->cell, ','));
        const CallLine& call = dialect_.call;
        return inputError(doubtful_->text + ", column " + inQuotes(columns_[doubtful_->column]) + ": is "
                          + inQuotes(doubtful_->cell) + " the number " + asThousands + " or " + asDecimals
                          + "? Every comma of the column stands before three digits; say which it is, thousands or "
                            "decimals:\n  "
                          + call.with("--thousands", "comma").text() + "\n  "
                          + call.with("--decimal", "comma").with("--thousands", "none").text());
    }

    [[nodiscard]] Failure undecodable(const std::string& place, std::string_view text) const
    {
        const std::string& encoding = dialect_.form.encoding;
        const std::string front = place + ": " + inQuotes(text) + " holds bytes that are not ";
        if (!encoding.empty())
            return inputError(front + visible(encoding) + "; correct them, or name another encoding");
        const std::string likely = likelyEncoding(text);
        return inputError(front + "UTF-8; the text may be in " + likely + ":\n  "
                          + dialect_.call.with("--encoding", likely).text());
    }

    void end(const RowSplitter& rows)
    {
        if (rows.fault() != RowSplitter::Fault::none)
            throw faultOf(rows);
        lines_ = rows.lines();
    }

    [[nodiscard]] Failure wrongLength(const RowSplitter& row) const
    {
        const std::size_t cells = row.cellCount();
        return dialect_.at(row.rowLine(),
                           "the row has " + std::to_string(cells) + (cells == 1 ? " cell" : " cells")
                               + ", the header has " + std::to_string(columns_.size())
                               + "; give every row one cell per column, in double quotes where it holds "
                               + dialect_.delimiterName());
    }

    [[nodiscard]] Failure faultOf(const RowSplitter& rows) const
    {
        using Fault = RowSplitter::Fault;
        const bool columnKnown = rows.cellCount() < columns_.size();
        const std::string column = columnKnown ? ", column " + inQuotes(columns_[rows.cellCount()]) : "";
        switch (rows.fault()) {
        case Fault::none:
        case Fault::strayQuote: break;
        case Fault::openQuote:
            return dialect_.at(rows.faultLine(),
                               "the text ends inside a quoted cell that begins here; close the double quote");
        case Fault::zeroByte:
            return dialect_.at(rows.faultLine(), "a zero byte in the text; the file is damaged, or not text in UTF-8");
        case Fault::longCell:
            return inputError(dialect_.place(rows.faultLine()) + column + ": the cell that begins here is longer than "
                              + megabytes(longestCell) + "; shorten it, or close its double quote");
        }
        return inputError(dialect_.place(rows.faultLine()) + column
                          + ": a double quote inside a cell without quotes, or text after a closing quote; put the "
                            "whole cell in double quotes and double those inside");
    }

    Dialect dialect_;
    RowSink& sink_;
    LineCount lines_;
    std::vector<std::string> columns_; ///< empty before the header
    std::vector<std::size_t> wanted_;
    std::optional<CellPlace> doubtful_; ///< the first cell whose comma may stand for thousands or for decimals
};

/// A zero byte is every second one in text of the English letters in UTF-16.
Failure zeroByteInFront(const std::string& name, std::string_view header, const CallLine& call)
{
    const char* const likely = header.find('\0') % 2 == 0 ? "UTF-16BE" : "UTF-16LE";
    return inputError(name + " is not text in UTF-8: its first line holds a zero byte; it may be in UTF-16:\n  "
                      + call.with("--encoding", likely).text());
}

TextFront readFront(TextBlocks& blocks, const std::string& name, const CallLine& call)
{
    TextFront front;
    do
        front = TextFront::of(blocks.text());
    while (!front.isComplete && front.header.size() <= longestHeader && blocks.readBlock());
    front = TextFront::of(blocks.text());
    requireText(name, blocks.text().substr(front.length));
    if (front.header.find('\0') != std::string_view::npos)
        throw zeroByteInFront(name, front.header, call);
    if (front.header.size() > longestHeader)
        throw inputError(name + ": the header is longer than " + megabytes(longestHeader)
                         + "; is this a table with a row of column names?");
    return front;
}

} // namespace

void readDelimited(ByteSource& source, const TextForm& form, RowSink& sink, const CallLine& call)
{
    TextBlocks blocks(source);
    const TextFront front = readFront(blocks, source.name(), call);
    RunReader reader({source.name(), form.delimiter.value_or(front.likelyDelimiter()), form, call}, front.firstLine,
                     sink);
    blocks.take(front.length);
    bool insideQuotes = false;
    std::size_t looked = 0; // at so much of what is not taken yet, which is whole rows no more
    do {
        const std::size_t length = lengthOfWholeRows(blocks.text().substr(looked), insideQuotes);
        if (length > 0) {
            reader.read(blocks.text().substr(0, looked + length));
            blocks.take(looked + length);
        }
        looked = blocks.text().size();
        if (looked > longestRow) {
            blocks.endLine();
            throw reader.tooLong(blocks.text());
        }
    } while (blocks.readBlock());
    blocks.endLine();
    reader.read(blocks.text());
    reader.finish();
}

} // namespace vexroc
