#pragma once

#include "cli/output/Table.h"
#include "cli/study/Remarks.h"
#include "cli/words/Failure.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vexroc {

/// The forms of a document. A page is another matter: see ReportPage.h.
enum class DocumentForm { text, csv, json, markdown, latex, sentence };

/// One part of the question that results answer, such as ("state", "diagnosis") or ("positive", {"malignant"}).
using Fact =
    std::pair<std::string_view, std::variant<std::string, double, unsigned long long, std::vector<std::string>>>;

/// The answer to a question, complete, before it is spelled in one form or several.
struct Document {
    struct Part {
        std::string_view member; ///< in JSON; empty: not for programs
        std::string title;       ///< for people; empty where the heading says it
        Table table;
        bool isForPeople = true;

        [[nodiscard]] bool isForPrograms() const noexcept { return !member.empty(); }
    };
    std::string_view command;
    std::vector<std::string> heading; ///< lines for people
    std::vector<Fact> question;       ///< the same for programs
    std::vector<Part> parts = {};
    std::vector<std::string> closing = {};   ///< lines for people behind the parts
    std::vector<std::string> sentences = {}; ///< visible text: each result as one sentence
};

/// The usage error for several tables as CSV.
Failure severalTables();

/// Heading and tables for people in lines of so many places, the table as CSV, one JSON document with the notes and
/// cautions, tables for a paper with the heading as their caption, or the sentences. Throws a usage error for several
/// tables as CSV.
std::string spelled(const Document& document, const Remarks& remarks, DocumentForm form, std::size_t width);

} // namespace vexroc
