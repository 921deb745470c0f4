#pragma once

#include "cli/commands/InputOptions.h"
#include "cli/commands/Report.h"
#include "cli/output/Document.h"
#include "cli/study/Question.h"
#include "cli/study/Study.h"
#include "cli/system/Surroundings.h"

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace vexroc {

/// The options that every question to a table has, as typed.
struct QuestionOptions {
    InputOptions input;
    std::string state;
    std::vector<std::string> tests;
    std::string format = "text";
    std::string output;
    bool smaller = false;
    bool exclude = false;
};

void addQuestionOptions(CLI::App& command, QuestionOptions& options);
void addFormatOption(CLI::App& command, std::string& format);
void addOutputOption(CLI::App& command, std::string& output);
void addLevelOption(CLI::App& command, std::string& level);
void addBiNegativeOption(CLI::App& command, bool& biNegative);

/// A question, the data that it is put to, and how its answer is written. From here on nothing is as typed.
struct Task {
    Input input;
    Question question = {};
    DocumentForm form = DocumentForm::text;
    std::string output = {}; ///< file of the answer; empty for standard output
};

/// The task behind the options, checked as far as it can be without the data. Throws a usage error that names the
/// option at fault.
Task parseTask(const QuestionOptions& options);
DocumentForm parseForm(const std::string& format);
/// COLUMN=VALUE[,VALUE...] with exactly `count` values that can occur in a column.
ValueChoice parseValueChoice(const std::string& text, const std::string& option, std::size_t count);
/// VALUE[,VALUE...], each a value that can occur in a column.
std::vector<std::string> parseValues(std::string_view list, const std::string& option);
/// A confidence level in (0, 1).
double parseLevel(const std::string& text);

/// Reads the columns of the question and studies them; progress is told, and an interrupt ends it.
Results answer(const Task& task, const Surroundings& surroundings);
/// The document in the form of the task, with its notes and warnings.
Report reportOf(const Task& task, const Document& document);

} // namespace vexroc
