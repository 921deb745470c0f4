#include "cli/commands/Commands.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/options/Offer.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vexroc {

namespace {

struct PartialOptions {
    SlicedOptions sliced;
    std::string fpr;
    std::string tpr;
};

Band parseBand(const PartialOptions& options)
{
    if (options.fpr.empty() == options.tpr.empty())
        throw usageError("name one band: --fpr FROM,TO of false positive rates, or --tpr FROM,TO of sensitivities");
    const bool isFpr = options.tpr.empty();
    const std::string option = isFpr ? "--fpr" : "--tpr";
    const std::string& text = isFpr ? options.fpr : options.tpr;
    const char* const example = isFpr ? "0,0.1" : "0.9,1";
    const std::string expected = std::string("two shares from 0 to 1, the smaller first, such as ") + example;
    const std::vector<double> ends =
        parseNumberList(option, {text}, {[](double s) { return s >= 0.0 && s <= 1.0; }, expected.c_str()});
    if (ends.size() != 2 || !(ends[0] < ends[1]))
        throw usageError(option + ' ' + inQuotes(text) + ": expected " + expected);
    return {isFpr ? "fpr" : "tpr", ends[0], ends[1]};
}

Report runPartial(const PartialOptions& options, const Surroundings& surroundings)
{
    const Band band = parseBand(options);
    const std::string& typed = options.sliced.inference.interval;
    const CurveOptions how{.interval = typed.empty() ? "logit" : typed};
    Task task = parseSliced(options.sliced, typed == "bootstrap" || typed == "bca");
    Answers<PartialArea> found;
    const Analysis analysis =
        answerSliced(task, surroundings, [&](std::string_view value, const TestResult& test, const Watch& watch) {
            found.push_back({value, &test, CurveInference(test, task.question, how, watch).partial(band)});
        });
    return reportOf(task, partialAreaDocument(analysis, how, band, found), surroundings);
}

} // namespace

Action addPartial(CLI::App& command)
{
    const auto options = std::make_shared<PartialOptions>();
    addSlicedOptions(command, options->sliced);
    command.add_option("--fpr", options->fpr, "The area under the curve over these false positive rates")
        ->type_name("FROM,TO");
    command.add_option("--tpr", options->tpr, "The area right of the curve over these sensitivities")
        ->type_name("FROM,TO");
    addLevelOption(command, options->sliced.inference);
    addChoice(command, "--interval", options->sliced.inference.interval, {"logit", "wald", "bootstrap", "bca"},
              "Interval of the area; logit when not given");
    addBootstrapOptions(command, options->sliced.inference);
    addSentenceOption(command, options->sliced.question.answer);
    command.footer("Example: vexroc partial data.csv --state diagnosis=malignant --test radius_mean --fpr 0,0.1");
    return [options](const Surroundings& surroundings) { return runPartial(*options, surroundings); };
}

} // namespace vexroc
