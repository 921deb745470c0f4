#pragma once

#include "cli/commands/InferenceOptions.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/output/Documents.h"
#include "cli/study/CurveInference.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// The options of commands that ask one thing of each curve, that of each test in each group and slice; as typed.
struct SlicedOptions {
    QuestionOptions question;
    GroupOptions groups;
    std::string by;
    InferenceOptions inference; ///< level, interval and bootstrap alone
};

/// The question, --group, --select, --by.
void addSlicedOptions(CLI::App& command, SlicedOptions& options);
void addByOption(CLI::App& command, std::string& by);
void addPrevalenceOption(CLI::App& command, std::string& prevalence, const std::string& description);
void addProportionOption(CLI::App& command, std::string& proportion);

/// The task behind them, with the level, and replicates and seed where `isBootstrap` is true of the interval. It keeps
/// the cases of each curve.
Task parseSliced(const SlicedOptions& options, bool isBootstrap = false);

/// What an option expects of a number.
struct Expected {
    bool (*holds)(double);
    const char* words; ///< "a number between 0 and 1, such as 0.1"
};
/// Nothing where the option is not given. Throws a usage error for what is not expected.
std::optional<double> parseNumberOption(const std::string& option, const std::string& text, const Expected& expected);
/// Numbers between commas.
std::vector<double> parseNumberList(const std::string& option, const std::vector<std::string>& lists,
                                    const Expected& expected);
/// In (0, 1); nothing where it is not given.
std::optional<double> parsePrevalence(const std::string& text);

/// Studies each slice of the table, and says what there is to say of slices.
Analysis studySlices(Task& task, DataTable table, const Watch& watch);

using AskCurve = std::function<void(std::string_view value, const TestResult& test, const Watch& watch)>;
/// Asks of each curve of all slices.
void askEach(const Analysis& analysis, const Watch& watch, const AskCurve& ask);
/// Reads the table of the task, studies it, and asks of each curve. Progress is told, and an interrupt ends it. Throws
/// an analysis error where there is no test to ask of.
Analysis answerSliced(Task& task, const Surroundings& surroundings, const AskCurve& ask);

} // namespace vexroc
