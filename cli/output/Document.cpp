#include "cli/output/Document.h"

#include "cli/output/Json.h"
#include "cli/output/TableForms.h"
#include "cli/words/Failure.h"
#include "cli/words/version.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vexroc {

namespace {

/// The part of a line up to where it may be broken: behind a comma or semicolon before a blank.
std::string_view firstPart(std::string_view line)
{
    const std::size_t end = std::min(line.find(", "), line.find("; "));
    return end == std::string_view::npos ? line : line.substr(0, end + 1);
}

/// The line, broken where it is wider than that.
std::string broken(std::string_view line, std::size_t width)
{
    constexpr std::string_view indent = "\n ";
    std::string text;
    std::size_t used = 0;
    while (!line.empty()) {
        const std::string_view part = firstPart(line);
        if (used > 0 && used + displayWidth(part) > width) {
            text += indent;
            used = indent.size() - 1;
        }
        text += part;
        used += displayWidth(part);
        line.remove_prefix(part.size());
    }
    return text + '\n';
}

std::string textOf(const Document& document, std::size_t width)
{
    std::string text;
    for (const std::string& line : document.heading)
        text += broken(line, width);
    for (const Document::Part& part : document.parts) {
        if (!part.isForPeople)
            continue;
        text += '\n';
        if (!part.title.empty())
            text += broken(part.title, width);
        writeText(part.table, width, text);
    }
    text += document.closing.empty() ? "" : "\n";
    for (const std::string& line : document.closing)
        text += line + '\n';
    return text;
}

std::string csvOf(const Document& document)
{
    const auto isTable = [](const Document::Part& part) { return part.isForPrograms(); };
    if (std::ranges::count_if(document.parts, isTable) > 1)
        throw severalTables();
    std::string text;
    writeCsv(std::ranges::find_if(document.parts, isTable)->table, text);
    return text;
}

/// What a table is about and how its numbers are made, as one text.
std::string captionOf(const Document& document, const Document::Part& part)
{
    std::string caption = part.title.empty() ? document.heading.front() : part.title;
    for (std::size_t line = 1; line < document.heading.size(); ++line)
        caption += ". " + document.heading[line];
    return caption + '.';
}

/// The tables as `write(table, caption, width, out)` spells each.
std::string paperOf(const Document& document, auto write)
{
    constexpr std::size_t width = 80; // about what a page of text holds
    std::string text;
    for (const Document::Part& part : document.parts) {
        if (!part.isForPeople)
            continue;
        text += text.empty() ? "" : "\n";
        write(part.table, captionOf(document, part), width, text);
    }
    return text;
}

std::string sentencesOf(const Document& document)
{
    std::string text;
    for (const std::string& sentence : document.sentences)
        text += sentence + '\n';
    return text;
}

nlohmann::ordered_json questionOf(const Document& document)
{
    nlohmann::ordered_json question;
    for (const auto& [name, value] : document.question)
        std::visit([&, key = std::string(name)](const auto& v) { question[key] = v; }, value);
    return question;
}

nlohmann::ordered_json listOf(const std::vector<Remark>& remarks)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const auto& [code, count, text] : remarks)
        list.push_back({{"code", code}, {"count", count}, {"text", text}});
    return list;
}

/// The tables are written row by row instead of as a tree: a curve has millions of points.
std::string jsonOf(const Document& document, const Remarks& remarks)
{
    std::string text = "{\n\"schema_version\": 3,\n\"program\": ";
    text += json::dump({{"name", "vexroc"}, {"version", programVersion}});
    text += ",\n\"command\": " + json::string(document.command);
    text += ",\n\"question\": " + json::dump(questionOf(document)) + ",\n\"results\": {";
    const char* separator = "\n";
    for (const Document::Part& part : document.parts) {
        if (!part.isForPrograms())
            continue;
        text.append(std::exchange(separator, ",\n")) += json::string(part.member) + ": ";
        writeJson(part.table, text);
    }
    text += "\n},\n\"notes\": " + json::dump(listOf(remarks.notes()));
    return text + ",\n\"cautions\": " + json::dump(listOf(remarks.cautions())) + "\n}\n";
}

} // namespace

Failure severalTables()
{
    return usageError("--format csv is one table, and the answer has several: --tables FOLDER writes each of them to a "
                      "file of its own as CSV, --format json holds all");
}

std::string spelled(const Document& document, const Remarks& remarks, DocumentForm form, std::size_t width)
{
    switch (form) {
    case DocumentForm::csv: return csvOf(document);
    case DocumentForm::json: return jsonOf(document, remarks);
    case DocumentForm::markdown: return paperOf(document, writeMarkdown);
    case DocumentForm::latex: return paperOf(document, writeLatex);
    case DocumentForm::sentence: return sentencesOf(document);
    case DocumentForm::text: break;
    }
    return textOf(document, width);
}

} // namespace vexroc
