#include "cli/output/TableForms.h"
#include "cli/output/TableLayout.h"
#include "cli/words/Numbers.h"

#include <algorithm>
#include <cmath>
#include <vector>

// Tables as the source of a paper: Markdown as pandoc and most sites know it, LaTeX with the package booktabs.
namespace vexroc {

namespace {

/// Visible text in which nothing is markup: a backslash stands before every sign that may be.
std::string markdownText(std::string_view visibleText)
{
    std::string text;
    for (const char c : visibleText) {
        const bool isDash = c == '-' && text.ends_with('-');
        if (isDash || std::string_view("\\`*_[]<>|~$&^#@").find(c) != std::string_view::npos)
            text += '\\';
        text += c;
    }
    return text;
}

/// What stands for a sign that LaTeX would take for something else, alone or beside its like; empty for the others.
std::string_view latexSign(char c)
{
    switch (c) {
    case '\\': return "\\textbackslash{}";
    case '~': return "\\textasciitilde{}";
    case '^': return "\\textasciicircum{}";
    case '<': return "\\textless{}";
    case '>': return "\\textgreater{}";
    case '|': return "\\textbar{}";
    case '{': return "\\{";
    case '}': return "\\}";
    case '#': return "\\#";
    case '$': return "\\$";
    case '%': return "\\%";
    case '&': return "\\&";
    case '_': return "\\_";
    case '`': return "{`}";
    case '[': return "{[}"; // an option of the line end before it
    case '*': return "{*}"; // likewise
    default: return "";
    }
}

std::string latexText(std::string_view visibleText)
{
    std::string text;
    for (const char c : visibleText)
        if (const std::string_view sign = latexSign(c); !sign.empty())
            text += sign;
        else if ((c == '-' || c == '\'') && text.ends_with(c))
            text.append("{}").push_back(c); // two in a row would be a dash, or a quotation mark
        else
            text += c;
    return text;
}

/// Digits behind the point of a plain number; none for any other text.
std::size_t decimalsOf(std::string_view cell)
{
    const std::size_t point = cell.find('.');
    const bool isPlain = !cell.empty() && cell.find_first_not_of("-0123456789.") == std::string_view::npos;
    return isPlain && point != std::string_view::npos ? cell.size() - point - 1 : 0;
}

/// A number as mathematics has it, other text as it is.
std::string latexNumber(std::string_view cell)
{
    if (cell.starts_with('<'))
        return std::string("$<$").append(latexNumber(cell.substr(1)));
    if (!parseNumber(cell))
        return latexText(cell);
    const std::size_t infinity = cell.find("inf");
    const std::size_t exponent = cell.find('e');
    if (infinity != std::string_view::npos)
        return std::string("$").append(cell.substr(0, infinity)).append("\\infty$");
    if (exponent != std::string_view::npos)
        return std::string("$")
            .append(cell.substr(0, exponent))
            .append("\\times10^{")
            .append(shortest(*parseNumber(cell.substr(exponent + 1))))
            .append("}$");
    return cell.starts_with('-') ? std::string("$").append(cell).append("$") : std::string(cell);
}

/// One panel, line by line, its cells as some markup spells them and padded to columns.
class SourcePanel {
public:
    template <class Spell>
    SourcePanel(const TableLayout& layout, const TableLayout::Places& places, Spell spell)
        : layout_(layout), places_(places), widths_(places.size())
    {
        for (std::size_t line = 0; line < layout.lines(); ++line) {
            cells_.emplace_back();
            for (std::size_t i = 0; i < places.size(); ++i) {
                cells_.back().push_back(spell(line, places[i]));
                widths_[i] = std::max(widths_[i], displayWidth(cells_.back().back()));
            }
        }
    }

    [[nodiscard]] std::size_t columns() const noexcept { return places_.size(); }
    [[nodiscard]] bool isName(std::size_t i) const { return layout_.isName(places_[i]); }
    [[nodiscard]] std::size_t width(std::size_t i) const { return widths_[i]; }
    [[nodiscard]] std::string line(std::size_t number, std::string_view separator) const
    {
        std::string text;
        for (std::size_t i = 0; i < columns(); ++i) {
            const std::string& cell = cells_[number][i];
            const std::size_t padding = widths_[i] - displayWidth(cell);
            text.append(i == 0 ? "" : separator).append(isName(i) ? 0 : padding, ' ').append(cell);
            text.append(isName(i) ? padding : 0, ' ');
        }
        return text;
    }

private:
    const TableLayout& layout_;
    const TableLayout::Places& places_;
    std::vector<std::vector<std::string>> cells_;
    std::vector<std::size_t> widths_;
};

/// The cells of a layout for LaTeX. Numbers of a column get the same number of decimals, the missing ones unseen, so
/// that those that stand to the right have their points below each other.
class LatexCells {
public:
    explicit LatexCells(const TableLayout& layout) : layout_(layout), decimals_(layout.columns())
    {
        for (std::size_t line = 1; line < layout.lines(); ++line)
            for (std::size_t place = 0; place < layout.columns(); ++place)
                decimals_[place] = std::max(decimals_[place], decimalsOf(layout.cell(line, place)));
    }

    std::string operator()(std::size_t line, std::size_t place) const
    {
        const std::string_view cell = layout_.cell(line, place);
        if (line == 0 || layout_.isName(place))
            return latexText(cell);
        const bool isPlain = !cell.empty() && cell.find_first_not_of("-0123456789.") == std::string_view::npos;
        const std::size_t decimals = decimalsOf(cell);
        if (!isPlain || decimals == decimals_[place])
            return latexNumber(cell);
        return latexNumber(cell) + "\\phantom{" + (decimals == 0 ? "." : "")
            + std::string(decimals_[place] - decimals, '0') + '}';
    }

private:
    const TableLayout& layout_;
    std::vector<std::size_t> decimals_;
};

} // namespace

void writeMarkdown(const Table& table, std::string_view caption, std::size_t width, std::string& out)
{
    const TableLayout layout(table, width);
    out.append("Table: ").append(markdownText(caption)).append("\n");
    for (const TableLayout::Places& places : layout.panels()) {
        const SourcePanel panel(layout, places, [&](std::size_t line, std::size_t place) {
            return markdownText(layout.cell(line, place));
        });
        out += "\n| " + panel.line(0, " | ") + " |\n|";
        for (std::size_t i = 0; i < panel.columns(); ++i)
            out.append(panel.isName(i) ? ":" : "-").append(panel.width(i), '-').append(panel.isName(i) ? "-|" : ":|");
        out += '\n';
        for (std::size_t line = 1; line < layout.lines(); ++line)
            out += "| " + panel.line(line, " | ") + " |\n";
    }
}

void writeLatex(const Table& table, std::string_view caption, std::size_t width, std::string& out)
{
    const TableLayout layout(table, width);
    const LatexCells cells(layout);
    out += "\\begin{table}\n\\centering\n\\caption{" + latexText(caption) + "}\n";
    const char* separator = "";
    for (const TableLayout::Places& places : layout.panels()) {
        const SourcePanel panel(layout, places, cells);
        out += std::exchange(separator, "\n\\bigskip\n");
        out += "\\begin{tabular}{";
        for (std::size_t i = 0; i < panel.columns(); ++i)
            out += panel.isName(i) ? 'l' : 'r';
        out += "}\n\\toprule\n" + panel.line(0, " & ") + " \\\\\n\\midrule\n";
        for (std::size_t line = 1; line < layout.lines(); ++line)
            out += panel.line(line, " & ") + " \\\\\n";
        out += "\\bottomrule\n\\end{tabular}\n";
    }
    out += "\\end{table}\n";
}

} // namespace vexroc
