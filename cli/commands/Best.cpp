#include "cli/commands/Commands.h"
#include "cli/commands/PlotOptions.h"
#include "cli/commands/Report.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/options/Offer.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/output/inferenceWords.h"
#include "cli/output/questionWords.h"
#include "cli/picture/Picture.h"
#include "cli/picture/curvesOf.h"
#include "cli/study/remarksOn.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace vexroc {

namespace {

struct BestOptions {
    SlicedOptions sliced;
    std::vector<std::string> criteria;
    std::string costRatio;
    std::string prevalence;
    std::string minSensitivity;
    std::string minSpecificity;
    std::string proportion = "wilson";
    PlotOptions plot;
};

constexpr Expected aShare{[](double s) { return s >= 0.0 && s <= 1.0; }, "a share from 0 to 1, such as 0.9"};

bool fixesRate(const std::string& criterion) { return criterion.find('=') != std::string::npos; }

void requireCriterion(const std::string& criterion)
{
    const std::vector<std::string> words{"youden", "closest", "accuracy", "cost", "f1", "mcc", "equal"};
    const std::vector<std::string> rates{"specificity", "sensitivity"};
    const std::size_t sign = criterion.find('=');
    const std::string name = criterion.substr(0, sign);
    const bool isRate = std::ranges::find(rates, name) != rates.end();
    if (isRate && sign != std::string::npos) {
        if (!parseNumberOption("--criterion " + name, criterion.substr(sign + 1), aShare))
            throw usageError("--criterion " + inQuotes(criterion) + ": expected " + aShare.words + ", behind the =");
        return;
    }
    if (sign == std::string::npos && std::ranges::find(words, name) != words.end())
        return;
    throw usageError("--criterion: no criterion " + inQuotes(criterion) + (isRate ? "" : didYouMean(name, words))
                     + "; the criteria are " + listed(words, words.size())
                     + ", 'specificity=SHARE', 'sensitivity=SHARE'");
}

std::vector<std::string> parseCriteria(const std::vector<std::string>& lists)
{
    std::vector<std::string> criteria;
    for (const std::string& list : lists)
        for (std::string& criterion : splitList(list, "--criterion")) {
            requireCriterion(criterion);
            criteria.push_back(std::move(criterion));
        }
    return criteria.empty() ? std::vector<std::string>{"youden"} : criteria;
}

/// Options that no criterion reads are a misunderstanding.
void requireReaders(const BestOptions& options, const std::vector<std::string>& criteria)
{
    const auto asks = [&](const char* criterion) { return std::ranges::find(criteria, criterion) != criteria.end(); };
    const InferenceOptions& inference = options.sliced.inference;
    if (!options.costRatio.empty() && !asks("cost"))
        throw usageError("--cost-ratio is about the criterion cost: ask for it with --criterion cost");
    if (!(options.minSensitivity.empty() && options.minSpecificity.empty()) && !asks("youden"))
        throw usageError("--min-sensitivity and --min-specificity are about the criterion youden: ask for it with "
                         "--criterion youden");
    const bool boots = !(inference.interval.empty() && inference.replicates.empty() && inference.seed.empty());
    if (boots && std::ranges::none_of(criteria, fixesRate))
        throw usageError("--interval, --replicates and --seed are about the criteria specificity=SHARE and "
                         "sensitivity=SHARE: ask for one of them");
}

CurveOptions parseHow(const BestOptions& options)
{
    const Expected ratio{[](double r) { return r > 0.0 && r < 1e300; }, "a number above 0, such as 5"};
    return {.interval = options.sliced.inference.interval.empty() ? "btii" : options.sliced.inference.interval,
            .proportion = options.proportion,
            .prevalence = parsePrevalence(options.prevalence),
            .costRatio = parseNumberOption("--cost-ratio", options.costRatio, ratio).value_or(1.0),
            .minSensitivity = parseNumberOption("--min-sensitivity", options.minSensitivity, aShare).value_or(0.0),
            .minSpecificity = parseNumberOption("--min-specificity", options.minSpecificity, aShare).value_or(0.0)};
}

bool anyCutOff(const Answers<std::vector<BestCutOffs>>& found)
{
    for (const auto& curve : found)
        for (const BestCutOffs& best : curve.answer)
            if (best.chosen != BestCutOffs::npos)
                return true;
    return false;
}

/// The curves with the chosen cut-offs of the criterion.
std::string pictureOf(const Analysis& analysis, const std::string& criterion,
                      const Answers<std::vector<BestCutOffs>>& found, Remarks& remarks, const PictureStyle& style)
{
    std::vector<DrawnCurve> curves;
    for (const auto& [value, test, best] : found) {
        const BestCutOffs& cutOffs = best.front();
        addDrawnCurve(*test, nameOf(analysis.question, test->area, value),
                      cutOffs.chosen == BestCutOffs::npos ? std::nullopt
                                                          : std::optional(cutOffs.ties.cutOff(cutOffs.chosen)),
                      curves);
    }
    const std::string notDrawn = prepareForDrawing(curves);
    if (curves.empty())
        throw analysisError("no curve to draw: there are no positive, or no negative cases");
    if (!notDrawn.empty())
        remarks.add("not-drawn", "", notDrawn);
    Drawing drawing{.curves = curves,
                    .interval = intervalOfAreas(analysis.question.inference),
                    .question = questionHeading(analysis.question, *analysis.labels),
                    .notes = {"Dot: the best cut-off by the criterion " + criterion + ", chosen on these data"}};
    if (const std::string note = thinningNote(curves); !note.empty())
        drawing.notes.push_back("Thinned: " + note);
    return svgPicture(drawing, style);
}

Report runBest(const BestOptions& options, const Surroundings& surroundings)
{
    const std::vector<std::string> criteria = parseCriteria(options.criteria);
    requireReaders(options, criteria);
    const CurveOptions how = parseHow(options);
    const bool withRates = std::ranges::any_of(criteria, fixesRate);
    Task task = parseSliced(options.sliced, withRates);
    if (withRates && task.form == DocumentForm::csv)
        throw severalTables();
    const PlannedPicture picture(options.plot);
    if (picture.isWanted() && criteria.size() > 1)
        throw usageError("--plot marks the cut-offs of one criterion: give one with --criterion");
    task.question.rocCurve = task.question.points = picture.isWanted();
    Answers<std::vector<BestCutOffs>> found;
    const Analysis analysis =
        answerSliced(task, surroundings, [&](std::string_view value, const TestResult& test, const Watch& watch) {
            found.push_back({value, &test, {}});
            for (const std::string& criterion : criteria)
                found.back().answer.push_back(CurveInference(test, task.question, how, watch).best(criterion));
        });
    remarkOnRows(task.question, analysis.values, task.remarks);
    if (anyCutOff(found))
        task.remarks.add("best-on-same-data");
    std::string drawn;
    if (picture.isWanted())
        drawn = pictureOf(analysis, criteria.front(), found, task.remarks, picture.style());
    Report report = reportOf(task, bestCutOffsDocument(analysis, how, found), surroundings);
    if (picture.isWanted())
        picture.addTo(report, std::move(drawn));
    return report;
}

void addConstraints(CLI::App& command, BestOptions& options)
{
    command
        .add_option("--cost-ratio", options.costRatio,
                    "Of the criterion cost: cost of a missed positive over that of a false alarm; 1 when not given")
        ->type_name("R");
    addPrevalenceOption(command, options.prevalence,
                        "Share of positive cases, of the criterion cost, and that PPV and NPV are to hold at");
    command
        .add_option("--min-sensitivity", options.minSensitivity, "Of the criterion youden: at least that sensitivity")
        ->type_name("SHARE");
    command
        .add_option("--min-specificity", options.minSpecificity, "Of the criterion youden: at least that specificity")
        ->type_name("SHARE");
}

} // namespace

Action addBest(CLI::App& command)
{
    const auto options = std::make_shared<BestOptions>();
    addSlicedOptions(command, options->sliced);
    command
        .add_option("--criterion", options->criteria,
                    "youden (when not given), closest, accuracy, cost, f1, mcc, equal, specificity=SHARE, "
                    "sensitivity=SHARE; one list, or the option repeated")
        ->type_name("WORD[,WORD...]")
        ->allow_extra_args(false);
    addConstraints(command, *options);
    addProportionOption(command, options->proportion);
    addLevelOption(command, options->sliced.inference);
    addChoice(command, "--interval", options->sliced.inference.interval, {"btii", "bootstrap"},
              "Of the rate at specificity=SHARE or sensitivity=SHARE: both know that the cut-off was chosen from the "
              "same data; btii when not given");
    addBootstrapOptions(command, options->sliced.inference);
    addSentenceOption(command, options->sliced.question.answer);
    addPlotOptions(command, options->plot, "Draw the curves, with the chosen cut-offs,");
    command.footer("Example: vexroc best data.csv --state diagnosis=malignant --test radius_mean --criterion "
                   "youden,specificity=0.95");
    return [options](const Surroundings& surroundings) { return runBest(*options, surroundings); };
}

} // namespace vexroc
