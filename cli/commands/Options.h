#pragma once

#include "cli/output/Report.h"
#include "cli/sources/Input.h"
#include "cli/study/Sample.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace vexroc {

/// The options that every analysis of a data file has, as typed.
struct StudyOptions {
    InputOptions input;
    std::string state;
    std::vector<std::string> tests;
    std::string format = "text";
    std::string output;
    bool smaller = false;
    bool exclude = false;
};

void addStudyOptions(CLI::App& command, StudyOptions& options);
void addFormatOption(CLI::App& command, std::string& format);
void addOutputOption(CLI::App& command, std::string& output);
void addLevelOption(CLI::App& command, std::string& level);
void addBiNegativeOption(CLI::App& command, bool& biNegative);

/// The question behind the options, checked as far as it can be without the data.
struct Question {
    Input input;
    ValueChoice state; ///< one value
    std::vector<std::string> tests;
    OutputFormat format;
    std::string output;  ///< file of the results; empty for standard output
    const char* include; ///< option words of the array calls
    const char* larger;

    /// "Positive: diagnosis = malignant; larger values are more positive"
    [[nodiscard]] std::string heading() const;
    /// The same for programs.
    [[nodiscard]] std::vector<Fact> facts() const;
};

/// Throws a usage error that names the option at fault.
Question parseQuestion(const StudyOptions& options);
OutputFormat parseFormat(const std::string& format);
/// COLUMN=VALUE[,VALUE...] with exactly `count` values that can occur in a column.
ValueChoice parseValueChoice(const std::string& text, const std::string& option, std::size_t count);
/// VALUE[,VALUE...], each a value that can occur in a column.
std::vector<std::string> parseValues(std::string_view list, const std::string& option);
/// A confidence level in (0, 1).
double parseLevel(const std::string& text);

/// Reads the columns of the question, and of the groups when there are any.
Study readStudy(const Question& question, const std::optional<ValueChoice>& groups, const Surroundings& surroundings);

} // namespace vexroc
