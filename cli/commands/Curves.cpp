#include "cli/commands/Commands.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/options/Offer.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/study/remarksOn.h"
#include "cli/words/Failure.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <utility>

namespace vexroc {

namespace {

struct PrOptions {
    SlicedOptions sliced;
    bool keilwagen = false;
    std::string area;
    std::string prevalence;
};

Report runRoc(const QuestionOptions& options, const Surroundings& surroundings)
{
    Task task = parseTask(options);
    task.question.rocCurve = task.question.points = true;
    const Results results = answer(task, surroundings);
    remarkOnCurves(results, task.remarks);
    return reportOf(task, curveDocument(task.question, results), surroundings);
}

Report runPrPoints(const PrOptions& options, const Surroundings& surroundings)
{
    Task task = parseTask(options.sliced.question);
    task.question.rocCurve = task.question.precisionRecall = task.question.points = true;
    task.question.alongFalsePositives = options.keilwagen;
    const Results results = answer(task, surroundings);
    remarkOnCurves(results, task.remarks);
    return reportOf(task, precisionRecallDocument(task.question, results), surroundings);
}

bool isBootstrap(const std::string& interval) { return interval == "bootstrap" || interval == "bca"; }

CurveOptions parsePrArea(const PrOptions& options)
{
    const std::string& typed = options.sliced.inference.interval;
    return {.interval = typed.empty() ? "logit" : typed, .prevalence = parsePrevalence(options.prevalence)};
}

Report runPrArea(const PrOptions& options, const Surroundings& surroundings)
{
    if (options.keilwagen)
        throw usageError("--keilwagen says how points are interpolated, and --area gives none: give one of them");
    const CurveOptions how = parsePrArea(options);
    Task task = parseSliced(options.sliced, isBootstrap(how.interval));
    task.remarks.leaveOut({"no-error"});
    Answers<PrecisionRecallArea> found;
    const Analysis analysis =
        answerSliced(task, surroundings, [&](std::string_view value, const TestResult& test, const Watch& watch) {
            found.push_back(
                {value, &test, CurveInference(test, task.question, how, watch).precisionRecall(options.area)});
        });
    if (how.prevalence && !isBootstrap(how.interval))
        task.remarks.add("no-interval-at-prevalence");
    return reportOf(task, precisionRecallAreaDocument(analysis, how, options.area, found), surroundings);
}

/// Options that only the area reads.
void requireNoAreaOptions(const PrOptions& options)
{
    const SlicedOptions& sliced = options.sliced;
    const InferenceOptions& inference = sliced.inference;
    const std::pair<const char*, bool> given[] = {{"--prevalence", !options.prevalence.empty()},
                                                  {"--level", !inference.level.empty()},
                                                  {"--interval", !inference.interval.empty()},
                                                  {"--replicates", !inference.replicates.empty()},
                                                  {"--seed", !inference.seed.empty()},
                                                  {"--group", !sliced.groups.group.empty()},
                                                  {"--select", !sliced.groups.select.empty()},
                                                  {"--by", !sliced.by.empty()},
                                                  {"--sentence", sliced.question.answer.sentence}};
    for (const auto& [option, isGiven] : given)
        if (isGiven)
            throw usageError(std::string(option)
                             + " is about the area under the curve: ask for it with --area integral");
}

Report runPr(const PrOptions& options, const Surroundings& surroundings)
{
    if (!options.area.empty())
        return runPrArea(options, surroundings);
    requireNoAreaOptions(options);
    return runPrPoints(options, surroundings);
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
    addSlicedOptions(command, options->sliced);
    command.add_flag("--keilwagen", options->keilwagen,
                     "Interpolate along false positives (Keilwagen) instead of true positives (Davis, Goadrich)");
    addChoice(command, "--area", options->area, {"integral", "step", "trapezoid"},
              "The area in place of the points: of the interpolated curve, average precision, or by straight lines");
    addPrevalenceOption(command, options->prevalence, "Share of positive cases that the area is to hold at");
    addLevelOption(command, options->sliced.inference);
    addChoice(command, "--interval", options->sliced.inference.interval, {"logit", "binomial", "bootstrap", "bca"},
              "Interval of the area; logit when not given. At a stated prevalence bootstrap and bca alone have one");
    addBootstrapOptions(command, options->sliced.inference);
    addSentenceOption(command, options->sliced.question.answer);
    command.footer("Example: vexroc pr data.csv --state diagnosis=malignant --test radius_mean --format csv\n"
                   "         vexroc pr data.csv --state diagnosis=malignant --test radius_mean --area integral");
    return [options](const Surroundings& surroundings) { return runPr(*options, surroundings); };
}

} // namespace vexroc
