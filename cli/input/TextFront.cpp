#include "cli/input/TextFront.h"

#include "cli/words/Failure.h"

#include <algorithm>
#include <array>

namespace vexroc {

namespace {

constexpr std::array delimiters{',', '\t', ';'};

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

} // namespace

TextFront TextFront::of(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    constexpr std::string_view separator = "sep=";
    TextFront front;
    std::string_view rest = text;
    if (rest.starts_with(byteOrderMark))
        rest.remove_prefix(byteOrderMark.size());
    const bool isSeparator = rest.starts_with(separator) && headerEnd(rest) == separator.size() + 2
        && std::ranges::find(delimiters, rest[separator.size()]) != delimiters.end();
    if (isSeparator) {
        front.delimiter = rest[separator.size()];
        front.firstLine = 2;
        rest.remove_prefix(separator.size() + 2);
        if (rest.starts_with('\n')) // of CRLF
            rest.remove_prefix(1);
    }
    const std::size_t end = headerEnd(rest);
    front.isComplete = end != std::string_view::npos;
    front.header = rest.substr(0, end);
    front.length = text.size() - rest.size();
    return front;
}

char TextFront::likelyDelimiter() const
{
    if (delimiter)
        return *delimiter;
    std::array<std::size_t, delimiters.size()> counts{};
    bool insideQuotes = false;
    for (const char c : header) {
        insideQuotes = insideQuotes != (c == '"');
        for (std::size_t i = 0; i < delimiters.size(); ++i)
            counts[i] += !insideQuotes && c == delimiters[i] ? 1 : 0;
    }
    return delimiters[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

void requireText(const std::string& name, std::string_view front)
{
    struct Known {
        std::string_view front;
        const char* message;
    };
    using namespace std::string_view_literals;
    constexpr std::array known{
        Known{"\x1F\x8B"sv, "is packed by gzip twice; unpack it once"},
        Known{"\x28\xB5\x2F\xFD"sv, "is packed by zstd twice; unpack it once"},
        Known{"\xFD"
              "7zXZ"sv,
              "is packed by xz twice; unpack it once"},
        Known{"BZh91AY&SY"sv, "is packed by bzip2 twice; unpack it once"},
        Known{"SQLite format 3"sv, "is an SQLite database; read it with --sqlite FILE and --table NAME or --query SQL"},
        Known{"PK\x03\x04"sv, "is a spreadsheet or a ZIP archive; save the table as CSV, or unpack the archive"},
    };
    for (const auto& [magic, message] : known)
        if (front.starts_with(magic))
            throw inputError(name + " " + message);
}

} // namespace vexroc
