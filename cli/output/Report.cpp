#include "cli/output/Report.h"

#include "cli/output/Json.h"
#include "version.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace vexroc {

namespace {

std::string plainText(const Findings& findings)
{
    std::string text;
    const bool forPeople = findings.format == OutputFormat::text;
    if (forPeople)
        for (const std::string& line : findings.heading)
            text += line + '\n';
    for (const Findings::Part& part : findings.tables) {
        text += text.empty() ? "" : "\n";
        if (forPeople && !part.title.empty())
            text.append(part.title) += '\n';
        part.table.write(text);
    }
    return text;
}

nlohmann::ordered_json questionOf(const Findings& findings)
{
    nlohmann::ordered_json question;
    for (const auto& [name, value] : findings.question)
        std::visit([&, key = std::string(name)](const auto& v) { question[key] = v; }, value);
    return question;
}

nlohmann::ordered_json listOf(const std::vector<Warning>& warnings)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const auto& [code, name, sentence] : warnings)
        list.push_back({{"code", code}, {"name", name}, {"text", sentence}});
    return list;
}

/// The tables are written row by row instead of as a tree: a curve has millions of points.
std::string jsonText(const Findings& findings, const std::vector<std::string>& notes,
                     const std::vector<Warning>& warnings)
{
    std::string text = "{\n\"schema_version\": 1,\n\"program\": ";
    text += json::dump({{"name", "vexroc"}, {"version", programVersion}});
    text += ",\n\"command\": " + json::string(findings.command);
    text += ",\n\"question\": " + json::dump(questionOf(findings)) + ",\n\"results\": {";
    const char* separator = "\n";
    for (const Findings::Part& part : findings.tables) {
        text.append(std::exchange(separator, ",\n")) += json::string(part.member) + ": ";
        part.table.write(text);
    }
    text += "\n},\n\"notes\": " + json::dump(notes);
    return text + ",\n\"warnings\": " + json::dump(listOf(warnings)) + "\n}\n";
}

} // namespace

std::string textOf(const Findings& findings, const std::vector<std::string>& notes,
                   const std::vector<Warning>& warnings)
{
    return findings.format == OutputFormat::json ? jsonText(findings, notes, warnings) : plainText(findings);
}

} // namespace vexroc
