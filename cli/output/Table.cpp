#include "cli/output/Table.h"

#include "cli/output/Json.h"
#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace vexroc {

namespace {

std::string digits(double value, std::chars_format format, int precision)
{
    std::array<char, 400> buffer{}; // the largest double has 309 digits before the point
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
    return {buffer.data(), result.ptr};
}

std::string statistic(double value)
{
    constexpr double smallest = 0.00005; // below, four decimals show nothing
    constexpr double largest = 1e9;
    const double size = std::fabs(value);
    if (size == 0.0)
        return "0.0000";
    if (size < smallest || size >= largest)
        return digits(value, std::chars_format::scientific, 1);
    return digits(value, std::chars_format::fixed, 4);
}

std::string exact(double value, CellRole role)
{
    const bool whole = role == CellRole::count || role == CellRole::flag;
    return whole ? digits(value, std::chars_format::fixed, 0) : shortest(value);
}

std::string jsonNumber(double value, CellRole role)
{
    if (std::isnan(value))
        return json::number(value);
    if (role == CellRole::flag)
        return value != 0.0 ? "true" : "false";
    return role == CellRole::count ? exact(value, role) : json::number(value);
}

/// A text cell of CSV; in double quotes where a reader might take it apart or trim it otherwise.
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

} // namespace

std::string readable(double value, CellRole role)
{
    if (std::isnan(value))
        return "NA";
    switch (role) {
    case CellRole::flag: return value != 0.0 ? "yes" : "no";
    case CellRole::statistic: return statistic(value);
    case CellRole::significance: return value < 0.0001 ? "<0.0001" : statistic(value);
    case CellRole::measure: return digits(value, std::chars_format::general, 8);
    case CellRole::name:
    case CellRole::count: break;
    }
    return digits(value, std::chars_format::fixed, 0);
}

Table::Table(OutputFormat format, std::span<const TableColumn> columns)
    : format_(format), columns_(columns.begin(), columns.end())
{
}

void Table::addRow(std::span<const Value> values)
{
    if (values.size() != columns_.size())
        throw std::logic_error("a row does not fit the columns of its table");
    for (std::size_t c = 0; c < values.size(); ++c)
        addCell(spelled(values[c], columns_[c].role));
}

std::string Table::spelled(const Value& value, CellRole role) const
{
    const auto* const text = std::get_if<std::string_view>(&value);
    switch (format_) {
    case OutputFormat::csv: return text ? csvText(*text) : exact(std::get<double>(value), role);
    case OutputFormat::json: return text ? json::string(*text) : jsonNumber(std::get<double>(value), role);
    case OutputFormat::html:
    case OutputFormat::text: break;
    }
    return text ? visible(*text) : readable(std::get<double>(value), role);
}

Table Table::behind(const TableColumn& leading) const
{
    std::vector<TableColumn> columns{leading};
    columns.insert(columns.end(), columns_.begin(), columns_.end());
    return Table(format_, columns);
}

void Table::append(std::string_view leading, const Table& rows)
{
    if (rows.columns_.size() + 1 != columns_.size() || rows.format_ != format_)
        throw std::logic_error("a table does not fit behind a leading column");
    const std::string first = spelled(leading, columns_.front().role);
    for (std::size_t row = 0; row < rows.rows(); ++row) {
        addCell(first);
        for (std::size_t c = 0; c < rows.columns_.size(); ++c)
            addCell(rows.cell(row, c));
    }
}

std::string Table::str() const
{
    std::string out;
    write(out);
    return out;
}

void Table::write(std::string& out) const
{
    switch (format_) {
    case OutputFormat::text: return writePanels(out);
    case OutputFormat::csv: return writeCsv(out);
    case OutputFormat::json: return writeJson(out);
    case OutputFormat::html: return writeHtml("", out);
    }
}

void Table::addCell(std::string_view text)
{
    text_ += text;
    ends_.push_back(text_.size());
}

std::string_view Table::cell(std::size_t row, std::size_t column) const
{
    const std::size_t index = row * columns_.size() + column;
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(text_).substr(begin, ends_[index] - begin);
}

void Table::writeCsv(std::string& out) const
{
    for (std::size_t c = 0; c < columns_.size(); ++c)
        out.append(c == 0 ? "" : ",").append(columns_[c].name);
    out += '\n';
    for (std::size_t row = 0; row < rows(); ++row) {
        for (std::size_t c = 0; c < columns_.size(); ++c)
            out.append(c == 0 ? "" : ",").append(cell(row, c));
        out += '\n';
    }
}

void Table::writeJson(std::string& out) const
{
    std::vector<std::string> keys;
    for (const TableColumn& column : columns_)
        keys.push_back(json::string(column.name) + ": ");
    std::size_t rowFrame = 4; // braces, comma and line end
    for (const std::string& key : keys)
        rowFrame += key.size() + 2;
    out.reserve(out.size() + text_.size() + rows() * rowFrame + 200); // the rest of a document included
    out += '[';
    for (std::size_t row = 0; row < rows(); ++row) {
        out += row == 0 ? "\n{" : ",\n{";
        for (std::size_t c = 0; c < columns_.size(); ++c)
            out.append(c == 0 ? "" : ", ").append(keys[c]).append(cell(row, c));
        out += '}';
    }
    out += rows() == 0 ? "]" : "\n]";
}

void Table::writeHtml(std::string_view title, std::string& out) const
{
    const auto writeRow = [&](const char* begin, const char* end, auto textOf) {
        out += "<tr>";
        for (std::size_t c = 0; c < columns_.size(); ++c) {
            // <bdi>: a name written from right to left does not reorder what stands around it.
            const bool name = columns_[c].role == CellRole::name;
            out.append(begin).append(name ? " class=\"name\"><bdi>" : ">").append(htmlText(textOf(c)));
            out.append(name ? "</bdi>" : "").append(end);
        }
        out += "</tr>\n";
    };
    out += "<div class=\"wide\"><table>\n";
    if (!title.empty())
        out.append("<caption><h2>").append(htmlText(title)).append("</h2></caption>\n");
    out += "<thead>";
    writeRow("<th scope=\"col\"", "</th>", [&](std::size_t c) { return columns_[c].title; });
    out += "</thead>\n<tbody>\n";
    for (std::size_t row = 0; row < rows(); ++row)
        writeRow("<td", "</td>", [&](std::size_t c) { return cell(row, c); });
    out += "</tbody>\n</table></div>\n";
}

void Table::writePanels(std::string& out) const
{
    const int lastPanel = std::ranges::max(columns_, {}, &TableColumn::panel).panel;
    for (int panel = std::min(lastPanel, 1); panel <= lastPanel; ++panel) {
        if (panel > 1)
            out += '\n';
        writePanel(panel, out);
    }
}

void Table::writePanel(int panel, std::string& out) const
{
    std::vector<std::size_t> shown;
    std::vector<std::size_t> widths;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        if (columns_[c].panel != 0 && columns_[c].panel != panel)
            continue;
        std::size_t width = displayWidth(columns_[c].title);
        for (std::size_t row = 0; row < rows(); ++row)
            width = std::max(width, displayWidth(cell(row, c)));
        shown.push_back(c);
        widths.push_back(width);
    }
    const auto writeLine = [&](auto textOf) {
        for (std::size_t i = 0; i < shown.size(); ++i) {
            const std::string_view text = textOf(shown[i]);
            const std::size_t padding = widths[i] - displayWidth(text);
            const bool left = columns_[shown[i]].role == CellRole::name;
            out.append(i == 0 ? 0 : 2, ' ').append(left ? 0 : padding, ' ').append(text);
            out.append(left && i + 1 < shown.size() ? padding : 0, ' ');
        }
        out += '\n';
    };
    writeLine([&](std::size_t c) { return columns_[c].title; });
    for (std::size_t row = 0; row < rows(); ++row)
        writeLine([&](std::size_t c) { return cell(row, c); });
}

} // namespace vexroc
