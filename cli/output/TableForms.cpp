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
    if (const auto* const cutOff = std::get_if<CutOffCell>(&value))
        return std::isnan(cutOff->value) ? "" : shortest(cutOff->value);
    const double number = std::get<double>(value);
    return isWhole(role) && !std::isnan(number) ? wholeDigits(number) : shortest(number);
}

std::string jsonCell(const Table::Value& value, CellRole role)
{
    if (const auto* const text = std::get_if<std::string_view>(&value))
        return json::string(*text);
    if (const auto* const cutOff = std::get_if<CutOffCell>(&value))
        return json::number(cutOff->value);
    const double number = std::get<double>(value);
    if (std::isnan(number) || !isWhole(role))
        return json::number(number);
    return role == CellRole::count ? wholeDigits(number) : number != 0.0 ? "true" : "false";
}

} // namespace

std::string forPeople(const Table::Value& value, CellRole role)
{
    if (const auto* const text = std::get_if<std::string_view>(&value))
        return visible(*text);
    if (const auto* const cutOff = std::get_if<CutOffCell>(&value))
        return cutOffText(cutOff->value, cutOff->reading);
    return readable(std::get<double>(value), role);
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
            if (table.columns()[c].title.empty())
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
