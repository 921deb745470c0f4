#include "cli/input/DelimitedReader.h"
#include "cli/input/RowSplitter.h"
#include "cli/input/TableBuilder.h"
#include "cli/sources/PackedSource.h"
#include "cli/study/ColumnLabels.h"
#include "cli/words/Failure.h"
#include "tests/support/pieces.h"

#include <archive.h>
#include <archive_entry.h>
#include <gmock/gmock.h>

#include <array>
#include <limits>
#include <random>

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

template <class Step>
std::string errorOf(Step step)
{
    try {
        step();
    } catch (const Failure& failure) {
        return std::to_string(failure.exitCode()) + ": " + failure.what();
    }
    return "no error";
}

std::string errorOf(const std::string& text, std::size_t pieceSize = std::string::npos)
{
    return errorOf([&] { read(text, stateAndTest, pieceSize); });
}

struct Packing {
    const char* name;
    int filter;
};
constexpr std::array packings{Packing{"gzip", ARCHIVE_FILTER_GZIP}, Packing{"zstd", ARCHIVE_FILTER_ZSTD},
                              Packing{"xz", ARCHIVE_FILTER_XZ}, Packing{"bzip2", ARCHIVE_FILTER_BZIP2}};

std::string pack(const std::string& text, int filter)
{
    std::string packed(text.size() + 1000, '\0');
    std::size_t length = 0;
    archive* const writer = archive_write_new();
    archive_entry* const entry = archive_entry_new();
    archive_write_set_format_raw(writer);
    archive_write_add_filter(writer, filter);
    archive_write_set_bytes_per_block(writer, 1);
    EXPECT_EQ(archive_write_open_memory(writer, packed.data(), packed.size(), &length), ARCHIVE_OK);
    archive_entry_set_filetype(entry, AE_IFREG);
    archive_write_header(writer, entry);
    archive_write_data(writer, text.data(), text.size());
    EXPECT_EQ(archive_write_close(writer), ARCHIVE_OK);
    archive_entry_free(entry);
    archive_write_free(writer);
    packed.resize(length);
    return packed;
}

std::string unpack(const std::string& bytes, std::size_t pieceSize = std::string::npos, std::size_t blockSize = 1000)
{
    const auto source = unpacked(std::make_unique<roctest::Pieces>(bytes, pieceSize));
    std::string text;
    std::string block(blockSize, '\0');
    while (const std::size_t length = source->read(block))
        text.append(block, 0, length);
    return text;
}

/// Hard to pack, so that a flipped byte lies in data as a rule.
std::string sampleText(std::size_t length)
{
    std::minstd_rand draw(3);
    std::string text;
    while (text.size() < length)
        text += static_cast<char>(' ' + draw() % 64);
    return text;
}

} // namespace

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
        {"delimiters in quotes", "\"a;b;c;d\",state,test\n,yes,1.5\n,no,-2\n,yes,3\n"},
        {"quotes in some lines", "state,test\nyes,1.5\n\"no\",-2\nyes,3\n"},
        {"CR, then LF", "state,test\ryes,1.5\rno,-2\nyes,3\n"},
        {"delimiter in a line of its own", "sep=;\nstate;test;a,b,c,d\nyes;1.5;\nno;-2;\nyes;3;\n"},
        {"the same with CRLF", "\xEF\xBB\xBFsep=\t\r\nstate\ttest\r\nyes\t1.5\r\nno\t-2\r\nyes\t3\r\n"},
        {"order", "test,state\n1.5,yes\n-2,no\n3,yes\n"},
    };
    for (const auto& [name, text] : tables)
        for (std::size_t pieceSize = 1; pieceSize <= text.size(); ++pieceSize) {
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
    EXPECT_THAT(missing.column("state", ColumnKind::labels).labelTexts,
                ElementsAre("", "NA", ".", "nan", "None", "N/A")); // what is missing among them is not the reader's
    EXPECT_THAT(missing.column("test", ColumnKind::numbers).missingCells.size(), 4u);
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
    const TextForm comma{.numbers = {','}};
    const auto readComma = [&](const std::string& text) { return read(text, stateAndTest, std::string::npos, comma); };
    const DataTable table = readComma("state;test\n1,5;1,5\n1,50;-,5e1\n1.5;inf\n.;.\n");
    EXPECT_THAT(table.numbers("test").first(3), ElementsAre(1.5, -5.0, infinity));
    EXPECT_EQ(ColumnLabels(table, "state").values().size(), 2u); // 1,50 is 1,5, and a point alone is missing
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
         "data.csv is packed by xz twice; unpack it once"},
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
        {"1,2\n3,4\n", "line 1: the first row holds numbers only"},
        {"test,state,test\n1,a,2\n", "line 1: the column name 'test' occurs more than once"},
        {std::string("s\0t\0", 4), "not text in UTF-8"},
    };
    for (const auto& [text, message] : faults)
        for (std::size_t pieceSize = 1; pieceSize <= text.size() + 1; ++pieceSize) {
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

TEST(DelimitedReader, StopsAtItsLimits)
{
    const std::string cell(longestCell, 'x');
    EXPECT_EQ(errorOf("state,test\n\"" + cell + "\",1\n" + cell + ",2\n"), "no error");
    EXPECT_THAT(errorOf("state,test\na,1\n" + cell + "x,2\n"),
                HasSubstr("line 3, column 'state': the cell that begins here is longer than 16 MB"));
    EXPECT_THAT(errorOf("state,test\na,\"" + cell + "x\n"), HasSubstr("line 2, column 'test': the cell that begins"));
    EXPECT_THAT(errorOf("state,test," + cell + "\na,1,2\n"), HasSubstr("the header is longer than 16 MB"));
    std::string row = "a,1";
    for (std::size_t length = 0; length <= longestRow; length += longestCell)
        row += "," + cell;
    EXPECT_THAT(errorOf("state,test,u,v,w,x,y\n" + row + "\n"), HasSubstr("line 2: the row is longer than 64 MB"));
    const std::string commas(mostColumns - 2, ',');
    EXPECT_THAT(errorOf("state,test" + commas + "\na,1\n"), HasSubstr("the row has 2 cells, the header has 1000000"));
    EXPECT_THAT(errorOf("state,test," + commas + "\n"), HasSubstr("the header has 1000001 columns; at most 1000000"));
}

TEST(PackedSource, UnpacksWhatItRecognisesByContent)
{
    const std::string text = sampleText(5000);
    std::vector<std::pair<std::string, std::string>> forms{{"plain", text}};
    for (const auto& [name, filter] : packings) {
        const std::string parts = pack(text.substr(0, 77), filter) + pack("", filter) + pack(text.substr(77), filter);
        forms.emplace_back(name, pack(text, filter));
        forms.emplace_back(std::string(name) + ", parts", parts);
        if (filter != ARCHIVE_FILTER_ZSTD) // which has no padding
            forms.emplace_back(std::string(name) + ", padding", parts + std::string(512, '\0'));
        EXPECT_EQ(unpack(pack("", filter)), "") << name;
    }
    const std::string skippableFrame("\x50\x2A\x4D\x18\x02\0\0\0xy", 10);
    forms.emplace_back("zstd, skippable frames", skippableFrame + pack(text, ARCHIVE_FILTER_ZSTD) + skippableFrame);
    for (const auto& [name, bytes] : forms)
        for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::string::npos}) {
            SCOPED_TRACE(name + ", pieces of " + std::to_string(size));
            EXPECT_EQ(unpack(bytes, size), text);
            EXPECT_EQ(unpack(bytes, size, 1), text);
        }
    for (const std::string shortText : {"", "\x1F", "\x28\xB5\x2F", "a", "BZh9", "BZh"})
        EXPECT_EQ(unpack(shortText, 1), shortText);
}

TEST(PackedSource, NamesTheSourceOfDataThatAreCutOffOrDamaged)
{
    const std::string text = sampleText(300);
    for (const auto& [name, filter] : packings) {
        const std::string packed = pack(text, filter);
        const auto error = [](const std::string& bytes) { return errorOf([&] { unpack(bytes); }); };
        const std::string source = std::string("3: cannot read data.csv: its ") + name + " data ";
        for (std::size_t length = 6; length < packed.size(); ++length)
            EXPECT_THAT(error(packed.substr(0, length)), StartsWith(source)) << name << length;
        for (const std::size_t length : {packed.size() / 2, packed.size() - 1})
            EXPECT_THAT(error(packed.substr(0, length)), HasSubstr("end too early")) << name << length;
        for (const std::size_t length : {1, 5, 20})
            EXPECT_THAT(error(packed + packed.substr(0, length)), StartsWith(source)) << name << length;
        EXPECT_THAT(error(packed + "rest"), StartsWith(source));
        // libarchive writes zstd without a checksum.
        for (std::size_t place = 20; filter != ARCHIVE_FILTER_ZSTD && place < packed.size(); ++place) {
            std::string damaged = packed;
            damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
            EXPECT_THAT(error(damaged), StartsWith(source)) << name << ", byte " << place;
        }
    }
}

} // namespace vexroc
