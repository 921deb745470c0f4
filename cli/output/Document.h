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

/// The forms of a document. A page is another matter: see Page.h.
enum class DocumentForm { text, csv, json };

/// One part of the question that results answer, such as ("state", "diagnosis") or ("positive", {"malignant"}).
using Fact =
    std::pair<std::string_view, std::variant<std::string, double, unsigned long long, std::vector<std::string>>>;

/// The answer to a question, complete, before it is spelled in one form or several.
struct Document {
    struct Part {
        std::string_view member; ///< in JSON
        std::string title;       ///< for people; empty where the heading says it
        Table table;
    };
    std::string_view command;
    std::vector<std::string> heading; ///< lines for people
    std::vector<Fact> question;       ///< the same for programs
    std::vector<Part> parts = {};
    std::vector<std::string> closing = {}; ///< lines for people behind the parts
};

/// The usage error for several tables as CSV.
Failure severalTables();

/// Heading and tables for people in lines of so many places, the table as CSV, or one JSON document with the notes and
/// cautions. Throws a usage error for several tables as CSV.
std::string spelled(const Document& document, const Remarks& remarks, DocumentForm form, std::size_t width);

} // namespace vexroc
