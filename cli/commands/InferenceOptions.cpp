#include "cli/commands/InferenceOptions.h"

#include "cli/options/Offer.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace vexroc {

namespace {

constexpr double chance = 0.5;

/// A number in (0, 1); what it is without one.
double parseShare(const std::string& option, const std::string& text, double otherwise)
{
    if (text.empty())
        return otherwise;
    const std::optional<double> share = parseNumber(text);
    if (!share || !(*share > 0.0 && *share < 1.0))
        throw usageError(option + ' ' + inQuotes(text) + ": expected a number between 0 and 1, such as "
                         + shortest(otherwise));
    return *share;
}

template <class Whole>
Whole parseWhole(const std::string& option, const std::string& text, Whole otherwise)
{
    if (text.empty())
        return otherwise;
    Whole number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < Whole{})
        throw usageError(option + ' ' + inQuotes(text) + ": expected a whole number from 0");
    return number;
}

const char* orElse(const std::string& typed, const char* otherwise)
{
    return typed.empty() ? otherwise : typed.c_str();
}

void requireFit(const InferenceOptions& options)
{
    if (options.biNegative && !(options.interval.empty() || options.interval == "wald"))
        throw usageError("--bi-negative and --interval " + options.interval
                         + " are two standard errors: give one of them; --bi-negative goes with --interval wald");
    if (options.biNegative && options.pValue == "mann-whitney")
        throw usageError("--bi-negative and --p-value mann-whitney are two tests: give one of them; --bi-negative goes "
                         "with --p-value wald");
}

/// Why an interval cannot be made with probability weights; null for one that can.
const char* whyNotWeighted(std::string_view interval)
{
    if (interval == "logit" || interval == "wald-delong")
        return nullptr;
    return interval == "bootstrap" || interval == "bca" ? "its replicates draw cases, whatever their weights"
                                                        : "its standard error counts cases, whatever their weights";
}

void requireFitWithWeights(const InferenceOptions& options)
{
    const char* const reason = options.interval.empty() ? nullptr : whyNotWeighted(options.interval);
    if (reason != nullptr)
        throw usageError("--interval " + options.interval + " does not go with probability weights: " + reason
                         + "; give logit or wald-delong");
    if (options.biNegative)
        throw usageError(
            "--bi-negative does not go with probability weights: its standard error counts cases, whatever "
            "their weights");
    if (options.pValue == "mann-whitney")
        throw usageError("--p-value mann-whitney does not go with probability weights: ranks count cases; give wald");
}

void requireFitOfTest(const InferenceOptions& options, const Inference& inference)
{
    if (inference.pMethod == "mann-whitney" && inference.nullArea != chance) // exact: as typed
        throw usageError("--p-value mann-whitney tests the area 0.5; for --null " + options.nullArea
                         + " give --p-value wald, or leave it out");
    if (inference.pMethod != "mann-whitney" && !options.exact.empty())
        throw usageError("--exact is about the p value of Mann and Whitney, and this one is Wald's");
}

} // namespace

void addLevelOption(CLI::App& command, InferenceOptions& options)
{
    command
        .add_option("--level", options.level, "Confidence level of the intervals, between 0 and 1; 0.95 when not given")
        ->type_name("P");
}

void addBootstrapOptions(CLI::App& command, InferenceOptions& options)
{
    command.add_option("--replicates", options.replicates, "Of a bootstrap; 1999 when not given")->type_name("N");
    command.add_option("--seed", options.seed, "Of a bootstrap: the same seed gives the same limits; 1 when not given")
        ->type_name("N");
}

namespace {

void addAlternativeOption(CLI::App& command, InferenceOptions& options, const char* description)
{
    addChoice(command, "--alternative", options.alternative, {"two-sided", "greater", "less"}, description);
}

void addBiNegativeOption(CLI::App& command, InferenceOptions& options)
{
    command.add_flag("--bi-negative", options.biNegative,
                     "Standard error under bi-negative exponential distributions, for --interval wald and --p-value "
                     "wald; needs as many positive as negative cases");
}

} // namespace

void addInferenceOptions(CLI::App& command, InferenceOptions& options)
{
    addLevelOption(command, options);
    addChoice(command, "--interval", options.interval,
              {"score", "newcombe", "logit", "wald", "wald-delong", "bootstrap", "bca"},
              "Interval of an area; score when not given. wald has the standard error of Hanley and McNeil, the others "
              "DeLong's");
    addBootstrapOptions(command, options);
    addChoice(command, "--p-value", options.pValue, {"mann-whitney", "wald"},
              "Test of an area: Mann-Whitney's, or by its standard error; mann-whitney when not given");
    addChoice(command, "--exact", options.exact, {"auto", "always", "never"},
              "Is the p of Mann-Whitney exact? auto, as when not given: where that takes milliseconds");
    command
        .add_option("--null", options.nullArea,
                    "Area that the p value is against; 0.5 when not given. Any other "
                    "takes --p-value wald")
        ->type_name("AREA");
    addAlternativeOption(command, options,
                         "Of the p values: is an area other than the null, greater, or less? Intervals are two-sided");
    addBiNegativeOption(command, options);
}

void addDifferenceOptions(CLI::App& command, InferenceOptions& options)
{
    addLevelOption(command, options);
    addChoice(command, "--interval", options.interval, {"wald-delong", "wald"},
              "Standard errors of areas in two groups: DeLong's, as when not given, or those of Hanley and McNeil");
    addAlternativeOption(command, options,
                         "Of the p values: is the first area other than the second, greater, or less? Intervals are "
                         "two-sided");
    addBiNegativeOption(command, options);
}

void parseLevel(const InferenceOptions& options, Inference& inference)
{
    inference.level = parseShare("--level", options.level, 0.95);
}

void parseBootstrap(const InferenceOptions& options, Inference& inference)
{
    if (!inference.isBootstrap() && !(options.replicates.empty() && options.seed.empty()))
        throw usageError("--replicates and --seed are about a bootstrap: ask for one with --interval bootstrap or bca");
    inference.replicates = parseWhole("--replicates", options.replicates, inference.replicates);
    inference.seed = parseWhole("--seed", options.seed, inference.seed);
    const double least = 2.0 / (1.0 - inference.level) - 1.0;
    if (inference.isBootstrap() && double(inference.replicates) < least - 1e-9) // 0.95 is none of the doubles
        throw usageError("--replicates " + std::to_string(inference.replicates) + " are too few for the level "
                         + shortest(inference.level) + ": give at least " + shortest(std::ceil(least - 1e-9)));
}

Inference parseInference(const InferenceOptions& options, bool probabilityWeights)
{
    requireFit(options);
    if (probabilityWeights)
        requireFitWithWeights(options);
    Inference inference{.exact = orElse(options.exact, "auto"),
                        .alternative = orElse(options.alternative, "two-sided"),
                        .biNegative = options.biNegative};
    parseLevel(options, inference);
    inference.nullArea = parseShare("--null", options.nullArea, chance);
    inference.interval = orElse(options.interval, options.biNegative ? "wald" : probabilityWeights ? "logit" : "score");
    const bool needsWald = options.biNegative || probabilityWeights || inference.nullArea != chance; // exact: as typed
    inference.pMethod = orElse(options.pValue, needsWald ? "wald" : "mann-whitney");
    requireFitOfTest(options, inference);
    parseBootstrap(options, inference);
    return inference;
}

Inference parseDifference(const InferenceOptions& options)
{
    requireFit(options);
    Inference inference{.interval = orElse(options.interval, options.biNegative ? "wald" : "wald-delong"),
                        .pMethod = "wald",
                        .alternative = orElse(options.alternative, "two-sided"),
                        .biNegative = options.biNegative};
    parseLevel(options, inference);
    return inference;
}

} // namespace vexroc
