#include "cli/commands/Commands.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/study/remarksOn.h"
#include "cli/words/Failure.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <memory>

namespace vexroc {

namespace {

struct PointsOptions {
    SlicedOptions sliced;
    std::vector<std::string> at;
    std::string prevalence;
    std::string proportion = "wilson";
};

Report runPoints(const PointsOptions& options, const Surroundings& surroundings)
{
    const CurveOptions how{.proportion = options.proportion, .prevalence = parsePrevalence(options.prevalence)};
    std::optional<std::vector<double>> at;
    if (!options.at.empty())
        at = parseNumberList("--at", options.at, {[](double) { return true; }, "cut-offs, numbers such as 2,5.5"});
    Task task = parseSliced(options.sliced);
    if (task.form == DocumentForm::sentence && !at)
        throw usageError("--sentence is about cut-offs that are named: name them with --at");
    Answers<OperatingPoints> found;
    const Analysis analysis =
        answerSliced(task, surroundings, [&](std::string_view value, const TestResult& test, const Watch& watch) {
            found.push_back({value, &test, CurveInference(test, task.question, how, watch).points(at)});
        });
    remarkOnRows(task.question, analysis.values, task.remarks);
    return reportOf(task, operatingPointsDocument(analysis, how, at.has_value(), found), surroundings);
}

} // namespace

Action addPoints(CLI::App& command)
{
    const auto options = std::make_shared<PointsOptions>();
    addSlicedOptions(command, options->sliced);
    command.add_option("--at", options->at, "Cut-offs; one list, or the option repeated. Without it, all of the curve")
        ->type_name("CUT-OFF[,CUT-OFF...]")
        ->allow_extra_args(false);
    addPrevalenceOption(command, options->prevalence, "Share of positive cases that PPV and NPV are to hold at");
    addProportionOption(command, options->proportion);
    addLevelOption(command, options->sliced.inference);
    addSentenceOption(command, options->sliced.question.answer);
    command.footer("Example: vexroc points data.csv --state diagnosis=malignant --test radius_mean --at 13,15 "
                   "--prevalence 0.1");
    return [options](const Surroundings& surroundings) { return runPoints(*options, surroundings); };
}

} // namespace vexroc
