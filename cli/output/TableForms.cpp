#include "cli/output/TableForms.h"

#include "cli/output/Json.h"
#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>

namespace vexroc {

namespace {

bool isWhole(CellRole role) { return role == CellRole::count || role == CellRole::flag; }

std::string forPeople(const Table::Value& value, CellRole role)
{
    const auto* const text = std::get_if<std::string_view>(&value);
    return text ? visible(*text) : readable(std::get<double>(value), role);
}

/// In double quotes where a reader might take the text apart or trim it otherwise.
std::string csvText(std::string_view text)
{
    const bool plain = !text.empty() && trimmed(text) == text && std::ranges::none_of(text, [](char c) {
        return c == ',' || c == ';' || c == '"' || (c >= '\0' && c < ' ') || c == '\x7F';
    });
    if (plain)
        return std::string(text);
    std::string cell = "\"";
    for (const char c : text)
        cell.append(c == '"' ? 2 : 1, c);
    return cell + '"';
}

std::string csvCell(const Table::Value& value, CellRole role)
{
    if (const auto* const text = std::get_if<std::string_view>(&value))
        return csvText(*text);
    const double number = std::get<double>(value);
    return isWhole(role) && !std::isnan(number) ? wholeDigits(number) : shortest(number);
}

std::string jsonCell(const Table::Value& value, CellRole role)
{
    if (const auto* const text = std::get_if<std::string_view>(&value))
        return json::string(*text);
    const double number = std::get<double>(value);
    if (std::isnan(number) || !isWhole(role))
        return json::number(number);
    return role == CellRole::count ? wholeDigits(number) : number != 0.0 ? "true" : "false";
}

/// One panel for people: the columns that it shows, spelled once, then set as wide as their widest cell.
class TextPanel {
public:
    TextPanel(const Table& table, int panel) : table_(table)
    {
        for (std::size_t c = 0; c < table.columns().size(); ++c)
            if (const int of = table.columns()[c].panel; of == 0 || of == panel)
                shown_.push_back(c);
        widths_.resize(shown_.size());
        for (const std::size_t c : shown_)
            add(table.columns()[c].title);
        for (std::size_t row = 0; row < table.rows(); ++row)
            for (const std::size_t c : shown_)
                add(forPeople(table.at(row, c), table.columns()[c].role));
    }

    void write(std::string& out) const
    {
        std::size_t begin = 0;
        for (std::size_t cell = 0; cell < ends_.size(); begin = ends_[cell++])
            writeCell(cell % shown_.size(), std::string_view(text_).substr(begin, ends_[cell] - begin), out);
    }

private:
    void add(std::string_view cell)
    {
        std::size_t& width = widths_[ends_.size() % shown_.size()];
        width = std::max(width, displayWidth(cell));
        text_ += cell;
        ends_.push_back(text_.size());
    }

    void writeCell(std::size_t place, std::string_view cell, std::string& out) const
    {
        const bool left = table_.columns()[shown_[place]].role == CellRole::name;
        const bool last = place + 1 == shown_.size();
        const std::size_t padding = widths_[place] - displayWidth(cell);
        out.append(place == 0 ? 0 : 2, ' ').append(left ? 0 : padding, ' ').append(cell);
        out.append(left && !last ? padding : 0, ' ').append(last ? 1 : 0, '\n');
    }

    const Table& table_;
    std::vector<std::size_t> shown_;
    std::vector<std::size_t> widths_;
    std::string text_;              ///< all cells, row by row, titles first
    std::vector<std::size_t> ends_; ///< where each cell ends in text_
};

} // namespace

void writeText(const Table& table, std::string& out)
{
    const int lastPanel = std::ranges::max(table.columns(), {}, &TableColumn::panel).panel;
    for (int panel = std::min(lastPanel, 1); panel <= lastPanel; ++panel) {
        if (panel > 1)
            out += '\n';
        TextPanel(table, panel).write(out);
    }
}

void writeCsv(const Table& table, std::string& out)
{
    const std::span<const TableColumn> columns = table.columns();
    for (std::size_t c = 0; c < columns.size(); ++c)
        out.append(c == 0 ? "" : ",").append(columns[c].name);
    out += '\n';
    for (std::size_t row = 0; row < table.rows(); ++row) {
        for (std::size_t c = 0; c < columns.size(); ++c)
            out.append(c == 0 ? "" : ",").append(csvCell(table.at(row, c), columns[c].role));
        out += '\n';
    }
}

void writeJson(const Table& table, std::string& out)
{
    const std::span<const TableColumn> columns = table.columns();
    std::vector<std::string> keys;
    for (const TableColumn& column : columns)
        keys.push_back(json::string(column.name) + ": ");
    out += '[';
    for (std::size_t row = 0; row < table.rows(); ++row) {
        out += row == 0 ? "\n{" : ",\n{";
        for (std::size_t c = 0; c < columns.size(); ++c)
            out.append(c == 0 ? "" : ", ").append(keys[c]).append(jsonCell(table.at(row, c), columns[c].role));
        out += '}';
    }
    out += table.rows() == 0 ? "]" : "\n]";
}

void writeHtml(const Table& table, std::string_view title, std::string& out)
{
    const auto writeRow = [&](const char* begin, const char* end, auto textOf) {
        out += "<tr>";
        for (std::size_t c = 0; c < table.columns().size(); ++c) {
            if (table.columns()[c].panel == TableColumn::noPanel)
                continue;
            // <bdi>: a name written from right to left does not reorder what stands around it.
            const bool name = table.columns()[c].role == CellRole::name;
            out.append(begin).append(name ? " class=\"name\"><bdi>" : ">").append(htmlText(textOf(c)));
            out.append(name ? "</bdi>" : "").append(end);
        }
        out += "</tr>\n";
    };
    out += "<div class=\"wide\"><table>\n";
    if (!title.empty())
        out.append("<caption><h2>").append(htmlText(title)).append("</h2></caption>\n");
    out += "<thead>";
    writeRow("<th scope=\"col\"", "</th>", [&](std::size_t c) { return std::string(table.columns()[c].title); });
    out += "</thead>\n<tbody>\n";
    for (std::size_t row = 0; row < table.rows(); ++row)
        writeRow("<td", "</td>", [&](std::size_t c) { return forPeople(table.at(row, c), table.columns()[c].role); });
    out += "</tbody>\n</table></div>\n";
}

} // namespace vexroc
