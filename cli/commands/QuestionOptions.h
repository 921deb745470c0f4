#pragma once

#include "cli/commands/InputOptions.h"
#include "cli/commands/Report.h"
#include "cli/output/Document.h"
#include "cli/study/Question.h"
#include "cli/study/Remarks.h"
#include "cli/study/Study.h"
#include "cli/system/Surroundings.h"

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace vexroc {

/// How and where an answer is written, as typed.
struct AnswerOptions {
    std::string format = "text";
    std::string output; ///< empty for standard output
    std::string tables; ///< folder; empty for none
    bool sentence = false;
};

/// The options that every question to a table has, as typed.
struct QuestionOptions {
    InputOptions input;
    std::string state;
    std::string negative;
    std::vector<std::string> tests;
    std::string count;
    AnswerOptions answer;
    bool smaller = false;
    bool exclude = false;
};

void addQuestionOptions(CLI::App& command, QuestionOptions& options);
void addAnswerOptions(CLI::App& command, AnswerOptions& options);
/// --sentence, of commands whose answers are few numbers.
void addSentenceOption(CLI::App& command, AnswerOptions& options);
/// --sort: the word "area", or "given".
void addSortOption(CLI::App& command, std::string& sort);

/// A question, the data that it is put to, and how its answer is written. From here on nothing is as typed.
struct Task {
    Input input;
    Question question = {};
    DocumentForm form = DocumentForm::text;
    std::string output = {}; ///< file of the answer; empty for standard output
    std::string tables = {}; ///< folder of the tables as CSV; empty for none
    Remarks remarks = {};    ///< what there is to say beside it
};

/// The task behind the options, checked as far as it can be without the data. Throws a usage error that names the
/// option at fault.
Task parseTask(const QuestionOptions& options);
void setAnswer(const AnswerOptions& options, Task& task);
/// Two groups of cases, as typed: a column, with or without the two of its values that are meant.
struct GroupOptions {
    std::string group;
    std::string select;
};
void addGroupOptions(CLI::App& command, GroupOptions& options);
/// The group is there. Throws a usage error for other than two values, or for values that are given twice.
Grouping parseGroup(const GroupOptions& options);
/// Which rows tests on the same cases are compared on, as typed; empty where it is not said.
void addCasesOption(CLI::App& command, std::string& cases);
/// Compares the tests of a question on the same cases. Throws a usage error for words that do not go with it.
void askPaired(const std::string& cases, Question& question);

/// Reads the columns of the question, which then is settled.
DataTable readQuestion(Task& task, const Surroundings& surroundings);
/// Reads, studies, and remarks on labels; progress is told, and an interrupt ends it.
Results answer(Task& task, const Surroundings& surroundings);
/// The document in the form of the task, and its tables for their folder, with its notes and cautions.
Report reportOf(const Task& task, const Document& document, const Surroundings& surroundings);

} // namespace vexroc
