#include "cli/input/DelimitedReader.h"
#include "cli/input/TableBuilder.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/values.h"
#include "tests/support/pieces.h"

#include <algorithm>
#include <array>
#include <vector>

using namespace roctest;
using namespace vexroc;

namespace {

const std::array requests{ColumnRequest{"a", ColumnKind::numbers}, ColumnRequest{"b", ColumnKind::labels}};

/// Everything that a reading gives, or its message.
std::string described(const std::string& text, std::size_t pieceSize, OtherColumns others)
{
    try {
        Pieces source(text, pieceSize);
        TableBuilder builder(requests, others);
        readDelimited(source, {}, builder);
        const DataTable table = builder.finish();
        std::string all = std::to_string(table.rows);
        for (const DataColumn& column : table.columns) {
            all.append("\n").append(column.request.name).append(":");
            require(column.numbers.size() + column.labels.size() == table.rows, "a column of another length");
            for (const double number : column.numbers)
                all.append(" ").append(shortest(number));
            for (const std::int32_t label : column.labels)
                all.append(label < 0 ? " NA" : column.labelTexts.at(static_cast<std::size_t>(label))).append("|");
        }
        return all;
    } catch (const Failure& failure) {
        require(failure.exitCode() == exitInput, "not an input error");
        return failure.what();
    }
}

/// Any text: however it is cut into pieces, the outcome is the same.
void readAnything(FuzzInput& input)
{
    const OtherColumns others = input.coin() ? OtherColumns::numeric : OtherColumns::skipped;
    const std::size_t pieceSize = 1 + static_cast<std::size_t>(input.below(20));
    const std::string text = (input.coin() ? "a,b\n" : "") + input.rest();
    require(described(text, std::string::npos, others) == described(text, pieceSize, others),
            "pieces change the outcome");
}

std::string written(const std::string& cell, bool quoted)
{
    if (!quoted)
        return cell;
    std::string text = "\"";
    for (const char c : cell)
        text += c == '"' ? std::string("\"\"") : std::string(1, c);
    return text + '"';
}

/// A label that is no word for a missing value, has no blanks at its ends and is UTF-8.
std::string anyLabel(FuzzInput& input)
{
    std::string label = std::string(1, '<').append(input.text(12)).append(1, '>');
    for (char& c : label)
        c = static_cast<char>(c & 0x7F);
    return label;
}

/// A table of known numbers and labels, written in any of the ways that are allowed, reads back as it was.
void readWhatWasWritten(FuzzInput& input)
{
    static constexpr char delimiters[] = {',', ';', '\t'};
    static constexpr const char* lineEnds[] = {"\n", "\r\n", "\r", "\n\n", "\r\n  \r\n"};
    const char delimiter = input.oneOf(delimiters);
    const std::string end = input.oneOf(lineEnds);
    std::string text = input.coin() ? "\xEF\xBB\xBF" : "";
    text += std::string("b") + delimiter + written("a", input.coin()) + delimiter + "\"other\"" + end;
    std::string expected = "\na:";
    std::string labels = "\nb:";
    std::size_t rows = 0;
    while (input.left() > 0 || rows == 0) {
        const double number = hardValue(input);
        const std::string label = anyLabel(input);
        const bool plain = label.find_first_of(",;\t\"\r\n") == std::string::npos;
        text += written(label, !plain || input.coin()) + delimiter + (input.coin() ? " " : "")
            + written(shortest(number), input.coin()) + delimiter + written(label, true) + end;
        expected.append(" ").append(shortest(number));
        labels.append(label).append("|");
        ++rows;
    }
    const std::string got = described(text, 1 + static_cast<std::size_t>(rows % 7), OtherColumns::skipped);
    require(got == std::to_string(rows) + expected + labels, "a written table reads differently");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    if (input.coin())
        readAnything(input);
    else
        readWhatWasWritten(input);
    return 0;
}
