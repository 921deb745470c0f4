#include "cli/input/RowSplitter.h"

namespace vexroc {

std::size_t lengthOfWholeRows(std::string_view text, bool& insideQuotes) noexcept
{
    // Quotes doubled inside a cell open and close it in one place: only whether their number is odd counts.
    if (text.find('"') != std::string_view::npos && std::ranges::count(text, '"') % 2 != 0)
        insideQuotes = !insideQuotes;
    bool inside = insideQuotes;
    for (std::size_t length = text.size(); length > 0; --length) {
        const char c = text[length - 1];
        if (c == '"')
            inside = !inside;
        else if (!inside && (c == '\n' || c == '\r'))
            return length;
    }
    return 0;
}

RowSplitter::RowSplitter(std::string_view run, char delimiter, LineCount lines, std::size_t mostCells)
    : delimiter_(delimiter), mostCells_(mostCells), next_(run.data()), end_(run.data() + run.size()), lines_(lines),
      rowStart_(lines)
{
    for (const char c : {' ', '\t'})
        kinds_[static_cast<unsigned char>(c)] = blank;
    for (const char c : {'"', '\r', '\n', '\0', delimiter})
        kinds_[static_cast<unsigned char>(c)] = special;
}

bool RowSplitter::next()
{
    if (fault_ != Fault::none || !skipBlankLines())
        return false;
    rowStart_ = lines_;
    rowBegin_ = next_;
    cells_.clear();
    for (count_ = 0; takeCell(); ++next_) {
        ++count_;
        if (*next_ == delimiter_)
            continue;
        lines_.endRow();
        if (*next_++ == '\n')
            lines_.feed();
        return true;
    }
    return false;
}

std::string_view RowSplitter::cell(std::size_t index)
{
    const RawCell& raw = cells_[index];
    std::string_view text(raw.begin, static_cast<std::size_t>(raw.end - raw.begin));
    if (raw.form == CellForm::plain) {
        while (!text.empty() && kindOf(text.back()) == blank)
            text.remove_suffix(1);
    } else if (raw.form == CellForm::withQuotesInside) {
        unescaped_.clear();
        for (std::size_t i = 0; i < text.size(); i += text[i] == '"' ? 2 : 1)
            unescaped_ += text[i];
        text = unescaped_;
    }
    return text;
}

std::size_t RowSplitter::cellLine(std::size_t index) const noexcept
{
    LineCount lines = rowStart_;
    for (auto feeds = std::count(rowBegin_, cells_[index].begin, '\n'); feeds > 0; --feeds)
        lines.feed();
    return lines.current();
}

const char* RowSplitter::behindBlanks(const char* text) const noexcept
{
    while (kindOf(*text) == blank)
        ++text;
    return text;
}

/// Leads to where a row begins; false when none does.
bool RowSplitter::skipBlankLines()
{
    while (next_ != end_) {
        next_ = behindBlanks(next_);
        if (*next_ != '\n' && *next_ != '\r')
            return true;
        if (*next_++ == '\n')
            lines_.feed();
    }
    return false;
}

/// Leads to what ends the cell: a delimiter, CR or LF. False at a fault.
bool RowSplitter::takeCell()
{
    const char* const begin = behindBlanks(next_);
    next_ = begin;
    if (*begin == '"')
        return takeQuotedCell();
    const char* end = begin;
    while (kindOf(*end) != special) // ends: the run's last byte is special
        ++end;
    next_ = end;
    if (*end == '"')
        return fail(Fault::strayQuote, lines_.current());
    if (*end == '\0')
        return fail(Fault::zeroByte, lines_.current());
    return keep({begin, end, CellForm::plain}, lines_.current());
}

bool RowSplitter::takeQuotedCell()
{
    const std::size_t line = lines_.current();
    RawCell cell{next_ + 1, next_ + 1, CellForm::quoted};
    for (; cell.end != end_ && *cell.end != '\0'; ++cell.end) {
        if (*cell.end == '\n')
            lines_.feed();
        if (*cell.end != '"')
            continue;
        if (cell.end[1] != '"') // never behind the run, whose last byte is no quote
            break;
        cell.form = CellForm::withQuotesInside;
        ++cell.end;
    }
    if (cell.end == end_)
        return keep(cell, line) && fail(Fault::openQuote, line);
    next_ = *cell.end == '\0' ? cell.end : behindBlanks(cell.end + 1);
    if (*next_ == '\0')
        return fail(Fault::zeroByte, lines_.current());
    if (*next_ == '"' || kindOf(*next_) != special)
        return fail(Fault::strayQuote, line);
    return keep(cell, line);
}

bool RowSplitter::keep(const RawCell& cell, std::size_t line)
{
    if (static_cast<std::size_t>(cell.end - cell.begin) > longestCell)
        return fail(Fault::longCell, line);
    if (count_ < mostCells_)
        cells_.push_back(cell);
    return true;
}

bool RowSplitter::fail(Fault fault, std::size_t line)
{
    fault_ = fault;
    faultLine_ = line;
    return false;
}

} // namespace vexroc
