#pragma once

#include "cli/output/Table.h"

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vexroc {

/// What a subcommand has to say, complete before a byte of it is written.
struct Report {
    std::string text; ///< for standard output, or the file
    std::string file; ///< empty for standard output
    // For standard error, one line each, already visible text.
    std::vector<std::string> notes;
    std::vector<std::string> warnings;
    std::string error; ///< why the analysis came to no result; the program then ends with exitNoResult
};

/// A warning of the component.
struct Warning {
    int code;
    std::string name;
    std::string sentence; ///< visible text

    [[nodiscard]] std::string line() const { return sentence + " (" + std::to_string(code) + " " + name + ")"; }
};

/// One part of the question that results answer, such as ("positive", "malignant").
using Fact = std::pair<std::string_view, std::variant<std::string, double>>;

/// The results of a subcommand before they become text.
struct Findings {
    struct Part {
        std::string_view member; ///< in JSON
        std::string_view title;  ///< for people; empty where the heading says it
        Table table;
    };
    OutputFormat format;
    std::string_view command;
    std::vector<std::string> heading; ///< lines for people
    std::vector<Fact> question;       ///< the same for programs
    std::vector<Part> tables;
};

/// Heading and tables for people, the tables as CSV, or one JSON document with the notes and warnings.
std::string textOf(const Findings& findings, const std::vector<std::string>& notes,
                   const std::vector<Warning>& warnings = {});

} // namespace vexroc
