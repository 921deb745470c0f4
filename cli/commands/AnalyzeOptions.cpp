#include "cli/commands/AnalyzeOptions.h"

#include "cli/commands/SlicedOptions.h"
#include "cli/options/Offer.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>

namespace vexroc {

namespace {

void addSplitOptions(CLI::App& command, AnalyzeOptions& options)
{
    addGroupOptions(command, options.groups);
    command.add_option("--cut", options.cut, "Groups below this value of the group column, and from it on")
        ->type_name("VALUE");
    command.add_flag("--mid-point", options.midPoint, "Groups below and from the middle of the group column's range");
}

void addResultOptions(CLI::App& command, AnalyzeOptions& options)
{
    command.add_flag("--pr", options.pr, "Precision-recall curves, and the areas under them");
    command.add_flag("--keilwagen", options.keilwagen,
                     "Interpolate them along false positives (Keilwagen) instead of true positives (Davis, Goadrich)");
    command.add_flag("--no-curve", options.noCurve, "Areas only, without the points of the ROC curves");
    command.add_flag("--best", options.best, "The cut-offs with the largest Youden index, with all ties");
    addPlotOptions(command, options.plot, "Draw the curves");
    command.add_flag("--rectangles", options.rectangles,
                     "Pictures shade where sensitivity and specificity of each point lie together");
    command.add_option("--report", options.files.report, "Write a page to explore the curves, with all tables")
        ->type_name("FILE.html");
    command.add_option("--curve", options.files.curve, "Write the points of the ROC curves to this file, as CSV")
        ->type_name("FILE");
    command
        .add_option("--pr-curve", options.files.precisionRecall,
                    "Write the points of the precision-recall curves, as CSV")
        ->type_name("FILE");
}

void requireFit(const AnalyzeOptions& options)
{
    const bool selects = !options.groups.select.empty();
    const bool split = options.midPoint || selects || !options.cut.empty();
    const bool isDrawn = !options.plot.file.empty() || !options.files.report.empty();
    const bool readsCurve =
        options.best || !options.files.curve.empty() || !options.files.precisionRecall.empty() || isDrawn;
    const struct {
        bool wrong;
        const char* message;
    } rules[] = {
        {split && options.groups.group.empty(),
         "--select, --cut and --mid-point split the cases by a column: name it with --group"},
        {int(options.midPoint) + int(selects) + int(!options.cut.empty()) > 1,
         "--select, --cut and --mid-point are three ways to split the cases: give one of them"},
        {!options.cases.empty() && options.compare != "paired",
         "--cases says which rows tests are compared on: ask for that with --compare paired"},
        {!options.weight.empty() && !options.question.count.empty(),
         "--count and --weight both say what a row stands for: give one of them"},
        {!options.weightKind.empty() && options.weight.empty(),
         "--weight-kind is about weights: name them with --weight"},
        {options.noCurve && readsCurve,
         "--best, --curve, --pr-curve, --plot and --report need the curve that --no-curve leaves out"},
        {options.rectangles && !isDrawn, "--rectangles are drawn: ask for a picture with --plot FILE or --report FILE"},
        {options.keilwagen && !options.pr && options.files.precisionRecall.empty(),
         "--keilwagen says how precision-recall points are interpolated: ask for them with --pr or --pr-curve FILE"},
    };
    for (const auto& [wrong, message] : rules)
        if (wrong)
            throw usageError(message);
}

std::optional<Grouping> parseGrouping(const AnalyzeOptions& options)
{
    if (options.groups.group.empty())
        return std::nullopt;
    Grouping grouping = parseGroup(options.groups);
    const bool splitsNumbers = options.midPoint || !options.cut.empty();
    if (splitsNumbers && grouping.by == Grouping::By::selected)
        throw usageError("--cut and --mid-point split numbers: give --group without values");
    if (options.midPoint) {
        grouping.by = Grouping::By::midPoint;
    } else if (!options.cut.empty()) {
        grouping.by = Grouping::By::cut;
        const std::optional<double> cut = parseNumber(options.cut);
        if (!cut)
            throw usageError("--cut " + inQuotes(options.cut) + ": expected a number");
        grouping.cut = *cut;
    }
    return grouping;
}

/// What is to be computed and kept, for the tables and the files that are asked for.
void askForParts(const AnalyzeOptions& options, AnalyzeTask& task)
{
    const bool drawn = task.isDrawn();
    task.bestTable = options.best;
    task.question.rocCurve = !options.noCurve;
    task.question.bestCutOffs = !options.noCurve; // the maximum is one of them
    task.question.precisionRecall = options.pr || !options.files.precisionRecall.empty();
    task.precisionRecallAreas = options.pr;
    task.question.summaries = options.pr || options.rectangles;
    task.question.points = drawn || !options.files.curve.empty() || !options.files.precisionRecall.empty();
    if (options.pr && options.files.precisionRecall.empty() && !drawn)
        task.remarks.add("points-elsewhere");
}

} // namespace

void keepStateApart(AnalyzeTask& task)
{
    const std::string& state = task.question.state.column;
    if (std::erase(task.question.tests, state) > 0)
        task.remarks.add("state-no-test", state);
    if (task.question.by == state)
        throw usageError("--by names the state column: every value would be one state; name another column");
}

void addAnalyzeOptions(CLI::App& command, AnalyzeOptions& options)
{
    addQuestionOptions(command, options.question);
    CLI::Option* const tests = command.get_option("--test");
    tests->description(tests->get_description() + ". The word all: every column of numbers without another part");
    addSplitOptions(command, options);
    command
        .add_option("--weight", options.weight,
                    "Column with weights, which change the weighted counts only unless their kind is probability; for "
                    "cases per row see --count")
        ->type_name("COLUMN");
    addChoice(command, "--weight-kind", options.weightKind, {"counts", "probability"},
              "counts: it is meant that weights change the weighted counts only; probability: they are inverse "
              "sampling probabilities, and move areas, errors and curves");
    addByOption(command, options.by);
    addChoice(command, "--compare", options.compare, {"paired", "independent"},
              "paired: all tests on the same cases; independent: each test between the groups");
    addCasesOption(command, options.cases);
    addInferenceOptions(command, options.inference);
    addSortOption(command, options.sort);
    addResultOptions(command, options);
    command.footer("Example: vexroc analyze data.csv --state diagnosis=malignant --test all --compare paired\n"
                   "         vexroc analyze data.csv --state disease=1 --test marker --group age --cut 50 --compare "
                   "independent");
}

AnalyzeTask parseAnalyzeTask(const AnalyzeOptions& options)
{
    requireFit(options);
    AnalyzeTask task;
    static_cast<Task&>(task) = parseTask(options.question);
    if (task.form == DocumentForm::csv)
        throw severalTables();
    task.files = options.files;
    Question& question = task.question;
    question.eachTest = false;
    question.weight = options.weight;
    question.weightKind = options.weightKind.empty() ? "unsaid" : options.weightKind;
    question.inference = parseInference(options.inference, question.hasProbabilityWeights());
    if (options.compare == "paired")
        askPaired(options.cases, question);
    else if (options.compare == "independent")
        question.comparison = Comparison::independent;
    question.grouping = parseGrouping(options);
    question.by = options.by;
    question.alongFalsePositives = options.keilwagen;
    question.byArea = options.sort == "area";
    task.picture = PlannedPicture(options.plot);
    task.rectangles = options.rectangles;
    task.allTests = question.tests == std::vector<std::string>{"all"};
    if (task.allTests)
        question.tests.clear();
    keepStateApart(task);
    askForParts(options, task);
    return task;
}

} // namespace vexroc
