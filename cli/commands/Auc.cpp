#include "cli/commands/Commands.h"
#include "cli/commands/InferenceOptions.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/output/Documents.h"
#include "cli/study/remarksOn.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vexroc {

namespace {

struct AucOptions {
    QuestionOptions question;
    InferenceOptions inference;
    std::string sort;
};

Report runAuc(const AucOptions& options, const Surroundings& surroundings)
{
    Task task = parseTask(options.question);
    task.question.inference = parseInference(options.inference, false);
    task.question.byArea = options.sort == "area";
    const Results results = answer(task, surroundings);
    remarkOnAreas(results, task.remarks);
    return reportOf(task, areaDocument(task.question, results), surroundings);
}

} // namespace

Action addAuc(CLI::App& command)
{
    const auto options = std::make_shared<AucOptions>();
    addQuestionOptions(command, options->question);
    addInferenceOptions(command, options->inference);
    addSentenceOption(command, options->question.answer);
    addSortOption(command, options->sort);
    command.footer("Example: vexroc auc data.csv --state diagnosis=malignant --test radius_mean,texture_mean");
    return [options](const Surroundings& surroundings) { return runAuc(*options, surroundings); };
}

} // namespace vexroc
