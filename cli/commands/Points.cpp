#include "cli/commands/Commands.h"
#include "cli/commands/PlotOptions.h"
#include "cli/commands/Report.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/output/inferenceWords.h"
#include "cli/picture/inferenceCharts.h"
#include "cli/study/remarksOn.h"
#include "cli/words/Failure.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"

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
    PlotOptions plot;
};

/// All cut-offs of the curves of one test; those that are named are marked.
Chart chartOf(const Analysis& analysis, const CurveOptions& how, const std::optional<std::vector<double>>& at,
              const Answers<OperatingPoints>& curves)
{
    std::vector<NamedAnswer<OperatingPoints>> drawn;
    for (const auto& [value, test, points] : curves)
        if (points.size() > 0)
            drawn.push_back({curves.size() > 1 ? nameOf(analysis.question, test->area, value) : "", &points});
    if (drawn.empty())
        throw analysisError("no curve to draw: there are no positive, or no negative cases");
    Chart chart = operatingPointsChart(drawn);
    chart.x = "cut-off of " + visible(curves.front().test->area.test);
    chart.marks = at.value_or(std::vector<double>());
    chart.notes = {questionHeading(analysis.question, *analysis.labels),
                   "Shaded: " + readable(100.0 * analysis.question.inference.level, CellRole::measure) + " % "
                       + proportionWord(how) + " intervals, cut-off by cut-off"};
    return chart;
}

Report runPoints(const PointsOptions& options, const Surroundings& surroundings)
{
    const CurveOptions how{.proportion = options.proportion, .prevalence = parsePrevalence(options.prevalence)};
    std::optional<std::vector<double>> at;
    if (!options.at.empty())
        at = parseNumberList("--at", options.at, {[](double) { return true; }, "cut-offs, numbers such as 2,5.5"});
    const PlannedPicture picture(options.plot);
    Task task = parseSliced(options.sliced);
    if (picture.isWanted() && task.question.tests.size() > 1)
        throw usageError("--plot draws one test, for each has a scale of its own: name one with --test");
    if (task.form == DocumentForm::sentence && !at)
        throw usageError("--sentence is about cut-offs that are named: name them with --at");
    Answers<OperatingPoints> found;
    Answers<OperatingPoints> drawn;
    const Analysis analysis =
        answerSliced(task, surroundings, [&](std::string_view value, const TestResult& test, const Watch& watch) {
            const CurveInference inference(test, task.question, how, watch);
            found.push_back({value, &test, inference.points(at)});
            if (picture.isWanted())
                drawn.push_back({value, &test, inference.points({})});
        });
    remarkOnRows(task.question, analysis.values, task.remarks);
    Report report = reportOf(task, operatingPointsDocument(analysis, how, at.has_value(), found), surroundings);
    if (picture.isWanted())
        picture.addTo(report, svgChart(chartOf(analysis, how, at, drawn), picture.style()));
    return report;
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
    addPlotOptions(command, options->plot, "Draw sensitivity and specificity against the cut-off");
    command.footer("Example: vexroc points data.csv --state diagnosis=malignant --test radius_mean --at 13,15 "
                   "--prevalence 0.1");
    return [options](const Surroundings& surroundings) { return runPoints(*options, surroundings); };
}

} // namespace vexroc
