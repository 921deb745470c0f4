#include "cli/commands/Commands.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/output/Documents.h"
#include "cli/study/remarksOn.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vexroc {

namespace {

struct PrOptions {
    QuestionOptions question;
    bool keilwagen = false;
};

Report runRoc(const QuestionOptions& options, const Surroundings& surroundings)
{
    Task task = parseTask(options);
    task.question.rocCurve = task.question.points = true;
    const Results results = answer(task, surroundings);
    remarkOnCurves(results, task.remarks);
    return reportOf(task, curveDocument(task.question, results), surroundings);
}

Report runPr(const PrOptions& options, const Surroundings& surroundings)
{
    Task task = parseTask(options.question);
    task.question.rocCurve = task.question.precisionRecall = task.question.points = true;
    task.question.alongFalsePositives = options.keilwagen;
    const Results results = answer(task, surroundings);
    remarkOnCurves(results, task.remarks);
    return reportOf(task, precisionRecallDocument(task.question, results), surroundings);
}

} // namespace

Action addCurve(CLI::App& command)
{
    const auto options = std::make_shared<QuestionOptions>();
    addQuestionOptions(command, *options);
    command.footer("Example: vexroc curve data.csv --state diagnosis=malignant --test radius_mean --format csv");
    return [options](const Surroundings& surroundings) { return runRoc(*options, surroundings); };
}

Action addPr(CLI::App& command)
{
    const auto options = std::make_shared<PrOptions>();
    addQuestionOptions(command, options->question);
    command.add_flag("--keilwagen", options->keilwagen,
                     "Interpolate along false positives (Keilwagen) instead of true positives (Davis, Goadrich)");
    command.footer("Example: vexroc pr data.csv --state diagnosis=malignant --test radius_mean --format csv");
    return [options](const Surroundings& surroundings) { return runPr(*options, surroundings); };
}

} // namespace vexroc
