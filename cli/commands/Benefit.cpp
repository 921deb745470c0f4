#include "cli/commands/Commands.h"
#include "cli/commands/PlotOptions.h"
#include "cli/commands/Report.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/output/inferenceWords.h"
#include "cli/picture/inferenceCharts.h"
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
    PlotOptions plot;
};

/// A score says how likely a case is positive, so larger is more positive.
void requireLarger(const TestResult& test)
{
    if (!test.area.largerIsPositive)
        throw usageError("net benefit takes scores for probabilities of the positive state, and smaller values of "
                         + inQuotes(test.area.test) + " are to be more positive: leave that out");
}

/// At a hundredth each, whatever thresholds the table is of.
std::vector<double> drawnThresholds()
{
    std::vector<double> thresholds;
    for (int i = 1; i < 100; ++i)
        thresholds.push_back(i / 100.0);
    return thresholds;
}

Chart chartOf(const Analysis& analysis, const CurveOptions& how, const std::vector<double>& thresholds,
              const Answers<NetBenefit>& curves)
{
    std::vector<NamedAnswer<NetBenefit>> drawn;
    for (const auto& [value, test, benefit] : curves)
        if (!benefit.thresholds.empty())
            drawn.push_back({nameOf(analysis.question, test->area, value), &benefit});
    if (drawn.empty())
        throw analysisError("no curve to draw: there are no positive, or no negative cases");
    Chart chart = netBenefitChart(drawn);
    chart.marks = thresholds;
    chart.notes = {questionHeading(analysis.question, *analysis.labels),
                   "Net benefit " + prevalenceWords(analysis, how) + "; treating none is 0"};
    return chart;
}

Report runBenefit(const BenefitOptions& options, const Surroundings& surroundings)
{
    const Expected aRisk{[](double t) { return t > 0.0 && t < 1.0; },
                         "thresholds of risk between 0 and 1, such as 0.05,0.1,0.2"};
    const std::vector<double> thresholds = parseNumberList("--at", options.at, aRisk);
    const CurveOptions how{.prevalence = parsePrevalence(options.prevalence)};
    if (options.sliced.question.exclude)
        throw usageError("a score that is equal to a threshold counts as positive: leave out --exclude");
    const PlannedPicture picture(options.plot);
    Task task = parseSliced(options.sliced);
    task.remarks.leaveOut({"below-chance"}); // whose advice, the other direction, does not go with risks
    Answers<NetBenefit> found;
    Answers<NetBenefit> drawn;
    const Analysis analysis =
        answerSliced(task, surroundings, [&](std::string_view value, const TestResult& test, const Watch& watch) {
            requireLarger(test);
            const CurveInference inference(test, task.question, how, watch);
            found.push_back({value, &test, inference.benefit(thresholds)});
            if (picture.isWanted())
                drawn.push_back({value, &test, inference.benefit(drawnThresholds())});
        });
    remarkOnRows(task.question, analysis.values, task.remarks);
    Report report = reportOf(task, netBenefitDocument(analysis, how, found), surroundings);
    if (picture.isWanted())
        picture.addTo(report, svgChart(chartOf(analysis, how, thresholds, drawn), picture.style()));
    return report;
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
    addPlotOptions(command, options->plot, "Draw net benefit against the threshold");
    command.footer("Example: vexroc benefit data.csv --state event=1 --test risk --at 0.05,0.1,0.2");
    return [options](const Surroundings& surroundings) { return runBenefit(*options, surroundings); };
}

} // namespace vexroc
