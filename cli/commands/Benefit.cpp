#include "cli/commands/Commands.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/study/remarksOn.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vexroc {

namespace {

struct BenefitOptions {
    SlicedOptions sliced;
    std::vector<std::string> at;
    std::string prevalence;
};

/// A score says how likely a case is positive, so larger is more positive.
void requireLarger(const TestResult& test)
{
    if (!test.area.largerIsPositive)
        throw usageError("net benefit takes scores for probabilities of the positive state, and smaller values of "
                         + inQuotes(test.area.test) + " are to be more positive: leave that out");
}

Report runBenefit(const BenefitOptions& options, const Surroundings& surroundings)
{
    const Expected aRisk{[](double t) { return t > 0.0 && t < 1.0; },
                         "thresholds of risk between 0 and 1, such as 0.05,0.1,0.2"};
    const std::vector<double> thresholds = parseNumberList("--at", options.at, aRisk);
    const CurveOptions how{.prevalence = parsePrevalence(options.prevalence)};
    if (options.sliced.question.exclude)
        throw usageError("a score that is equal to a threshold counts as positive: leave out --exclude");
    Task task = parseSliced(options.sliced);
    Answers<NetBenefit> found;
    const Analysis analysis =
        answerSliced(task, surroundings, [&](std::string_view value, const TestResult& test, const Watch& watch) {
            requireLarger(test);
            found.push_back({value, &test, CurveInference(test, task.question, how, watch).benefit(thresholds)});
        });
    remarkOnRows(task.question, analysis.values, task.remarks);
    return reportOf(task, netBenefitDocument(analysis, how, found), surroundings);
}

} // namespace

Action addBenefit(CLI::App& command)
{
    const auto options = std::make_shared<BenefitOptions>();
    addSlicedOptions(command, options->sliced);
    command
        .add_option("--at", options->at,
                    "Thresholds of risk, between 0 and 1: a score from there on counts as positive; one list, or the "
                    "option repeated")
        ->type_name("P[,P...]")
        ->allow_extra_args(false)
        ->required();
    addPrevalenceOption(command, options->prevalence, "Share of positive cases that net benefit is to hold at");
    command.footer("Example: vexroc benefit data.csv --state event=1 --test risk --at 0.05,0.1,0.2");
    return [options](const Surroundings& surroundings) { return runBenefit(*options, surroundings); };
}

} // namespace vexroc
