#include "cli/input/DelimitedReader.h"
#include "cli/input/TableBuilder.h"
#include "cli/sources/BinaryCopy.h"
#include "cli/study/Sample.h"
#include "cli/words/Failure.h"
#include "tests/support/pieces.h"

#include <gmock/gmock.h>

#include <array>
#include <limits>

namespace vexroc {

namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsNan;
using testing::StartsWith;

constexpr double infinity = std::numeric_limits<double>::infinity();

const std::array stateAndTest{ColumnRequest{"state", ColumnKind::labels}, ColumnRequest{"test", ColumnKind::numbers}};

DataTable read(const std::string& text, std::span<const ColumnRequest> requests = stateAndTest,
               std::size_t pieceSize = std::string::npos, const TextForm& form = {})
{
    roctest::Pieces source(text, pieceSize);
    TableBuilder builder(requests, OtherColumns::skipped);
    readDelimited(source, form, builder);
    return builder.finish();
}

std::string errorOf(const std::string& text, std::size_t pieceSize = std::string::npos)
{
    try {
        read(text, stateAndTest, pieceSize);
    } catch (const Failure& failure) {
        return std::to_string(failure.exitCode()) + ": " + failure.what();
    }
    return "no error";
}

/// The rows that a copy of an int4, a numeric and a text gives; what is wrong with it otherwise.
std::string copied(std::string_view bytes, std::size_t pieceSize)
{
    std::string rows;
    BinaryCopy copy({BinaryCopy::Type::int4, BinaryCopy::Type::numeric, BinaryCopy::Type::text},
                    [&](std::span<const Cell> cells) {
                        for (const Cell& cell : cells)
                            rows += textOf(cell) + (isMissing(cell) ? "missing|" : "|");
                    });
    for (; !bytes.empty(); bytes.remove_prefix(std::min(pieceSize, bytes.size())))
        if (!copy.feed(bytes.substr(0, pieceSize)))
            return "not understood";
    return copy.isComplete() ? rows : "not complete";
}

} // namespace

TEST(BinaryCopy, ReadsRowsFromPartsOfAnyLengthAndRefusesOthers)
{
    using namespace std::string_literals;
    const std::string header = "PGCOPY\n\xFF\r\n\0\0\0\0\0\0\0\0\0"s;
    const std::string number = "\0\0\0\4\xFF\xFF\xFF\xF9"s; // -7
    const std::string numeric = "\0\0\0\xE\0\3\0\1\x40\0\0\2\0\1\x09\x29\x1A\x2C"s;
    // -12345.67: groups 1, 2345, 6700
    const std::string null = "\xFF\xFF\xFF\xFF";
    const std::string text = "\0\0\0\2ab"s;
    const std::string whole = header + "\0\3"s + number + numeric + text + "\0\3"s + null + null + text + "\xFF\xFF";
    for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{5}, std::size_t{40}, whole.size()})
        EXPECT_EQ(copied(whole, pieceSize), "-7|-12345.67|ab|missing|missing|ab|") << pieceSize;
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(copied(whole.substr(0, length), 7), "not complete") << length;
    for (const std::string& wrong : {"PGCOPX"s + whole.substr(6), header + "\0\2"s + number + numeric, whole + "x",
                                     header + "\0\3"s + text + numeric + text, header + "\0\3"s + number + text + text})
        EXPECT_EQ(copied(wrong, wrong.size()), "not understood");
}

TEST(DelimitedReader, UnderstandsEveryWayToWriteATable)
{
    const std::pair<const char*, std::string> tables[] = {
        {"comma", "state,test\nyes,1.5\nno,-2\nyes,3\n"},
        {"tab", "state\ttest\nyes\t1.5\nno\t-2\nyes\t3\n"},
        {"CRLF", "state,test\r\nyes,1.5\r\nno,-2\r\nyes,3\r\n"},
        {"CR", "state,test\ryes,1.5\rno,-2\ryes,3\r"},
        {"byte order mark", "\xEF\xBB\xBFstate,test\nyes,1.5\nno,-2\nyes,3\n"},
        {"no last line end", "state,test\nyes,1.5\nno,-2\nyes,3"},
        {"last cell quoted, no line end", "state,test\nyes,1.5\nno,-2\nyes,\"3\""},
        {"blank lines", "\n\nstate,test\nyes,1.5\n\nno,-2\n  \nyes,3\n\n"},
        {"blanks", " state , test\nyes, 1.5\n no,-2 \nyes ,\" 3 \"\n"},
        {"quotes", "\"state\",\"test\"\n\"yes\",\"1.5\"\n\"no\",\"-2\"\n\"yes\",\"3\"\n"},
        {"other columns", "x,state,test\n\"a \"\"b\"\", c\nd\",yes,1.5\n,no,-2\n\"\",yes,3\n"},
        {"delimiters in quotes", "\"a;b;c\",state,test\n,yes,1.5\n,no,-2\n,yes,3\n"},
        {"quotes in some lines", "state,test\nyes,1.5\n\"no\",-2\nyes,3\n"},
        {"CR, then LF", "state,test\ryes,1.5\rno,-2\nyes,3\n"},
        {"delimiter in a line of its own", "sep=;\nstate;test;a,b,c,d\nyes;1.5;\nno;-2;\nyes;3;\n"},
        {"the same with CRLF", "\xEF\xBB\xBFsep=\t\r\nstate\ttest\r\nyes\t1.5\r\nno\t-2\r\nyes\t3\r\n"},
        {"order", "test,state\n1.5,yes\n-2,no\n3,yes\n"},
    };
    for (const auto& [name, text] : tables)
        for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{7}, std::string::npos}) {
            SCOPED_TRACE(std::string(name) + ", pieces of " + std::to_string(pieceSize));
            const DataTable table = read(text, stateAndTest, pieceSize);
            EXPECT_EQ(table.rows, 3u);
            EXPECT_THAT(table.column("state", ColumnKind::labels).labelTexts, ElementsAre("yes", "no"));
            EXPECT_THAT(table.column("state", ColumnKind::labels).labels, ElementsAre(0, 1, 0));
            EXPECT_THAT(table.numbers("test"), ElementsAre(1.5, -2.0, 3.0));
        }
}

TEST(DelimitedReader, TellsMissingCellsFromWordsAndReadsNumbersExactly)
{
    const DataTable missing = read("state,test\n,1\nNA,NA\n.,.\nnan,NaN\nNone,-nan\nN/A,\n\"\",\"\"\n");
    EXPECT_THAT(missing.column("state", ColumnKind::labels).labels, ElementsAre(-1, -1, -1, -1, 0, 1, -1));
    EXPECT_THAT(missing.numbers("test").subspan(1), Each(IsNan()));
    const DataTable table = read("state,test\na,0.1\na,+1e3\na,-0\na,inf\na,-Infinity\na,5e-324\n"
                                 "a,1.7976931348623157e308\na,9007199254740993\n");
    EXPECT_THAT(table.numbers("test"),
                ElementsAre(0.1, 1000.0, 0.0, infinity, -infinity, 5e-324, std::numeric_limits<double>::max(),
                            9007199254740992.0));
}

TEST(DelimitedReader, KeepsAColumnOncePerKind)
{
    const std::array requests{ColumnRequest{"x", ColumnKind::numbers}, ColumnRequest{"x", ColumnKind::labels},
                              ColumnRequest{"x", ColumnKind::numbers}};
    const DataTable table = read("x|y\n1.0|2\n1|2\n", requests, std::string::npos, {.delimiter = '|'});
    EXPECT_EQ(table.columns.size(), 2u);
    EXPECT_THAT(table.numbers("x"), ElementsAre(1.0, 1.0));
    EXPECT_THAT(table.column("x", ColumnKind::labels).labelTexts, ElementsAre("1.0", "1"));
}

TEST(DelimitedReader, ReadsDecimalCommasOnRequestAndThenNoPoints)
{
    const TextForm comma{.delimiter = {}, .decimal = ','};
    const auto readComma = [&](const std::string& text) { return read(text, stateAndTest, std::string::npos, comma); };
    const DataTable table = readComma("state;test\n1,5;1,5\n1,50;-,5e1\n1.5;inf\n.;.\n");
    EXPECT_THAT(table.numbers("test").first(3), ElementsAre(1.5, -5.0, infinity));
    EXPECT_THAT(matchRows(table, {"state", {"1,5"}}), ElementsAre(0, 0, otherValue, missingValue)); // 1,50 is 1,5
    for (const char* const cell : {"1.5", "1.234,5", "1,234,5"})
        EXPECT_THROW(readComma(std::string("state;test\na;") + cell + "\n"), Failure) << cell;
}

TEST(DelimitedReader, NamesPlaceAndCellOfWhatItCannotRead)
{
    const std::pair<std::string, const char*> faults[] = {
        {"", "data.csv is empty"},
        {"state,test\n", "data.csv has a header row but no rows of data"},
        {"state,test\na,1\nb,x1\n", "data.csv, line 3, column 'test': 'x1' is neither a number nor missing"},
        {"state,test\na,1e999\n", "'1e999' is beyond the range of a double"},
        {std::string("state,test\na,1\nb,2\0\n", 20), "data.csv, line 3: a zero byte in the text"},
        {"sep=;\nstate;test\na;x1\n", "line 3, column 'test': 'x1'"},
        {"SQLite format 3", "data.csv is an SQLite database; read it with --sqlite"},
        {"\xFD"
         "7zXZ",
         "data.csv is packed by xz; unpack it"},
        {"PK\x03\x04", "is a spreadsheet or a ZIP archive"},
        {"state;test\na;1,5\n",
         "'1,5' is neither a number nor missing; write a number, or leave the cell empty (for "
         "decimal commas: --decimal comma)"},
        {"state,test\n\"a\nb\",1\nc,\"\nd\"\n", "line 4, column 'test': '\\nd'"},
        {"state,test\ra,1\rb,x\r", "line 3, column 'test': 'x'"},
        {"state,test\ra,1\rb,2\nc,3\n\nd,x\n", "line 6, column 'test': 'x'"},
        {"state,test\na,1\nb\n", "line 3: the row has 1 cell, the header has 2"},
        {"state,test\na,b,1\n", "line 2: the row has 3 cells, the header has 2"},
        {"state,test\na,\"1\nb,2\nc,3\n", "line 2: the text ends inside a quoted cell that begins here"},
        {"state,test\na,\"1\nb,\"2\"\n", "line 2, column 'test': a double quote inside a cell without quotes, or text"},
        {"stat,test\na,1\n", "line 1: no column 'state' in the header; did you mean 'stat'?"},
        {"u,v\na,1\n", "line 1: no column 'state' in the header; its columns are 'u', 'v'"},
        {"1,2\n3,4\n", "This line holds numbers only"},
        {"test,state,test\n1,a,2\n", "line 1: the column name 'test' occurs more than once"},
        {std::string("s\0t\0", 4), "not text in UTF-8"},
    };
    for (const auto& [text, message] : faults)
        for (const std::size_t pieceSize : {std::size_t{1}, std::string::npos}) {
            SCOPED_TRACE(text);
            EXPECT_THAT(errorOf(text, pieceSize), AllOf(StartsWith("3: "), HasSubstr(message)));
        }
}

TEST(DelimitedReader, CountsLinesAcrossBlocks)
{
    std::string text = "state,test,note\r\n";
    for (int row = 0; row < 60'000; ++row)
        text += "a," + std::to_string(row) + ",\"two\r\nlines\"\r\n";
    EXPECT_EQ(read(text).numbers("test").back(), 59'999.0);
    EXPECT_THAT(errorOf(text + "a,b,c\r\n"), HasSubstr("line 120002, column 'test': 'b'"));
}

} // namespace vexroc
