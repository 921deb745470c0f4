#include "cli/input/DelimitedReader.h"
#include "cli/input/TableBuilder.h"
#include "cli/input/likelyEncoding.h"
#include "cli/sources/DecodedSource.h"
#include "cli/words/Failure.h"
#include "tests/support/pieces.h"

#include <gmock/gmock.h>

#include <array>

namespace vexroc {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::array<std::string_view, 6> arguments{"auc", "data.csv", "--decimal", "point", "--", "x"};

DataTable read(const std::string& text, const TextForm& form = {}, std::size_t pieceSize = std::string::npos)
{
    const std::array requests{ColumnRequest{form.firstRow == FirstRow::cases ? "1" : "s", ColumnKind::labels},
                              ColumnRequest{form.firstRow == FirstRow::cases ? "2" : "x", ColumnKind::numbers}};
    const auto source = decoded(std::make_unique<roctest::Pieces>(text, pieceSize), form.encoding);
    TableBuilder builder(requests, OtherColumns::skipped);
    readDelimited(*source, form, builder, CallLine(arguments));
    return builder.finish();
}

std::vector<double> numbers(const std::string& cells, const NumberForm& form)
{
    return read("s;x\n" + cells, {.numbers = form}).columns[1].numbers;
}

std::string errorOf(const std::string& text, const TextForm& form = {})
{
    try {
        read(text, form);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no error";
}

} // namespace

TEST(TextForms, ThousandsAreGroupsOfThreeDigits)
{
    EXPECT_THAT(numbers("a;1,200\na;-12,345,678.5e1\na;950\na;1200\n", {'.', Thousands::comma}),
                ElementsAre(1200, -123456785, 950, 1200));
    EXPECT_THAT(numbers("a;1.200,5\na;+1.200\n", {',', Thousands::point}), ElementsAre(1200.5, 1200));
    EXPECT_THAT(numbers("a;1 200\na;1\u00A0200\na;1\u202F200,5\n", {',', Thousands::blank}),
                ElementsAre(1200, 1200, 1200.5));
    EXPECT_THAT(numbers("a;1'200\na;1\u2019200\n", {'.', Thousands::apostrophe}), ElementsAre(1200, 1200));
    for (const char* const cell : {"1,20", "1,2000", "0,200", "1234,567", ",200", "1,,200", "1,200,", "1.5,200"})
        EXPECT_THROW(numbers(std::string("a;") + cell + "\n", {'.', Thousands::comma}), Failure) << cell;
}

TEST(TextForms, ACommaBeforeThreeDigitsIsAskedAbout)
{
    const std::string doubtful = "s;x\na;1\nb;1,200\nb;12,345\n";
    EXPECT_THAT(errorOf(doubtful),
                AllOf(HasSubstr("line 3, column 'x': is '1,200' the number 1200 or 1.2?"),
                      HasSubstr("\n  vexroc auc data.csv --decimal point --thousands comma -- x"),
                      HasSubstr("\n  vexroc auc data.csv --decimal comma --thousands none -- x")));
    const std::pair<const char*, const char*> decided[] = {
        {"b;1,25\n",
         "'1,25' is neither a number nor missing; write a number, or leave the cell empty (for decimal "
         "commas: --decimal comma)"},
        {"b;1,200,000\n", "(for commas between thousands: --thousands comma)"},
        {"b;12%\n", "'12%' has a per cent sign"},
        {"b;< 5\n", "'< 5' is a limit, not a number"},
        {"b;\u2265100\n", "one number above all measured ones"},
    };
    for (const auto& [row, message] : decided)
        EXPECT_THAT(errorOf(doubtful + row), AllOf(HasSubstr("line 5"), HasSubstr(message))) << row;
}

TEST(TextForms, DecimalsThatMayBeThousandsAreInDoubt)
{
    const auto doubt = [](const std::string& cells, const NumberForm& form) {
        return read("s;x\n" + cells, {.numbers = form}).columns[1].doubtful;
    };
    EXPECT_EQ(doubt("a;900\na;1,200\na;NA\n", {','}), "1,200");
    EXPECT_EQ(doubt("a;1,200\n", {',', Thousands::none}), "");
    for (const char* const clear : {"0,200", "1234,500", "1,25", "1,0", "1,200e1"})
        EXPECT_EQ(doubt(std::string("a;1,200\na;") + clear + "\n", {','}), "") << clear;
    EXPECT_EQ(doubt("a;950\na;1.200\n", {}), "1.200");
    for (const char* const clear : {"a;1.234\na;950\n", "a;1.200\na;2.300\n", "a;950\na;1.200\na;0.5\n"})
        EXPECT_EQ(doubt(clear, {}), "") << clear;
}

TEST(TextForms, AFirstRowOfNumbersHasToBeSaidToBeOne)
{
    const std::string text = "1,2.5\n0,NA\n";
    EXPECT_THAT(errorOf(text), AllOf(HasSubstr("line 1"), HasSubstr("--no-header"), HasSubstr("--header")));
    EXPECT_EQ(read(text, {.firstRow = FirstRow::cases}).rows, 2u);
    EXPECT_THAT(errorOf(text, {.firstRow = FirstRow::names}), HasSubstr("no column 's' in the header"));
    EXPECT_EQ(read("s,,x\n1,2,3\n").rows, 1u);
}

TEST(TextForms, EncodingsBecomeUtf8)
{
    const std::string utf16 = std::string("\xFF\xFEs\0,\0x\0\n\0\xF6\0,\0001\0\n\0", 18);
    for (std::size_t size = 1; size < 8; ++size) {
        EXPECT_THAT(read(utf16, {}, size).columns[0].labelTexts, ElementsAre("ö"));
        EXPECT_THAT(read("s,x\n\xF6,1\n", {.encoding = "latin1"}, size).columns[0].labelTexts, ElementsAre("ö"));
    }
    EXPECT_THAT(errorOf("s,x\na,1\ngr\xF6n,1\n"),
                AllOf(HasSubstr("line 3, column 's': 'gr\\xf6n' holds bytes that are not UTF-8"),
                      HasSubstr("--encoding windows-1252 -- x")));
    EXPECT_THAT(errorOf("s,x,gr\xF6n\na,1,1\n"), HasSubstr("line 1, column 3"));
    EXPECT_THAT(errorOf("s,x\n\xF6,1\n", {.encoding = "ascii"}), HasSubstr("not ascii"));
    EXPECT_EQ(errorOf("s,x,y\na,1,\xF6\na,1,\xFF\xFE\n"), "no error");
    EXPECT_TRUE(isEncoding("SHIFT_JIS") && !isEncoding("utf-9") && !isEncoding("ascii//IGNORE"));
}

TEST(TextForms, TheLikelyEncodingIsThatOfItsWords)
{
    const std::pair<const char*, const char*> words[] = {
        {"gr\xF6n", "windows-1252"},
        {"gr\xF6\xDF"
         "e",
         "windows-1252"},
        {"1\xA0"
         "200",
         "windows-1252"},
        {"gr\x94n", "cp850"},
        {"\xE1\xEE\xEB\xE5\xED", "windows-1251"},
        {"\xC2\xCF\xCC\xC5\xCE", "KOI8-R"},
        {"\xB2\xA1\xC8\xCB", "GB18030"},
        {"\x83\x65\x83\x58", "SHIFT_JIS"},
    };
    for (const auto& [word, encoding] : words)
        EXPECT_EQ(likelyEncoding(word), encoding) << word;
}

} // namespace vexroc
