#include "calls/inferenceOptions.h"

#include "calls/guard.h"
#include "calls/words.h"
#include "host/VexMV.h"
#include "inference/Bootstrap.h"
#include "inference/TestAndInterval.h"

#include <cmath>
#include <string>
#include <string_view>

namespace ROCALG_920::calls {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();
constexpr std::string_view proportionWords[] = {"wilson", "exact"};

vexroc_inference_options defaults()
{
    return {.struct_size = sizeof(vexroc_inference_options),
            .level = 0.95,
            .smaller_is_positive = 0,
            .exclude_cut_off = 0,
            .interval = nullptr,
            .proportion = proportionWords[0].data(),
            .p_method = pRuleWords[0].data(),
            .exact = exactRuleWords[0].data(),
            .alternative = alternativeWords[0].data(),
            .null_area = 0.5,
            .small_sample = 0,
            .uncorrected = 0,
            .prevalence = missing,
            .cost_ratio = 1.0,
            .min_sensitivity = 0.0,
            .min_specificity = 0.0,
            .replicates = 1999,
            .seed = 1,
            .progress = nullptr,
            .cancel = nullptr,
            .parallel = nullptr,
            .user = nullptr};
}

/// The defaults, and over them the members that the caller's structure has.
vexroc_inference_options overDefaults(const vexroc_inference_options* given)
{
    vexroc_inference_options all = defaults();
    if (given == nullptr)
        return all;
    if (given->struct_size < sizeof(std::size_t))
        throw InvalidArgument("options: struct_size is not set; give it the sizeof of the structure and call "
                              "vexroc_inference_defaults");
    std::memcpy(&all, given, std::min(given->struct_size, sizeof all));
    return all;
}

[[noreturn]] void refuse(std::string_view member, double value, std::string_view expected)
{
    throw InvalidArgument(std::string(member) + ": expected a number " + std::string(expected) + ", not "
                          + (std::isnan(value) ? "NaN" : shortest(value)));
}

void requireInside(std::string_view member, double value)
{
    if (!(value > 0.0 && value < 1.0))
        refuse(member, value, "between 0 and 1");
}

void requireShare(std::string_view member, double value)
{
    if (!(value >= 0.0 && value <= 1.0))
        refuse(member, value, "from 0 to 1");
}

/// What the numbers of the structure can be.
void requireNumbers(const vexroc_inference_options& given)
{
    requireInside("null_area", given.null_area);
    if (!std::isnan(given.prevalence))
        requireInside("prevalence", given.prevalence);
    if (!(given.cost_ratio > 0.0 && std::isfinite(given.cost_ratio)))
        refuse("cost_ratio", given.cost_ratio, "above 0");
    requireShare("min_sensitivity", given.min_sensitivity);
    requireShare("min_specificity", given.min_specificity);
    constexpr long long mostReplicates = 100'000'000;
    if (given.replicates < 1 || given.replicates > mostReplicates)
        throw InvalidArgument("replicates: expected 1 to " + std::to_string(mostReplicates) + ", not "
                              + std::to_string(given.replicates));
}

} // namespace

InferenceOptions inferenceOptions(const vexroc_inference_options* given)
{
    const vexroc_inference_options all = overDefaults(given);
    requireNumbers(all);
    const bool hasLevel = all.level > 0.0 && all.level < 1.0;
    return {.level = all.level,
            .zCritical = hasLevel ? criticalValue(all.level) : missing,
            .largerIsPositive = all.smaller_is_positive == 0,
            .includeCutOff = all.exclude_cut_off == 0,
            .interval = all.interval,
            .proportion = ProportionInterval(positionOf(all.proportion, proportionWords, "proportion")),
            .pMethod = PRule(positionOf(all.p_method, pRuleWords, "p_method")),
            .exact = ExactRule(positionOf(all.exact, exactRuleWords, "exact")),
            .alternative = Alternative(positionOf(all.alternative, alternativeWords, "alternative")),
            .nullArea = all.null_area,
            .smallSample = all.small_sample != 0,
            .corrected = all.uncorrected == 0,
            .prevalence = std::isnan(all.prevalence) ? std::nullopt : std::optional(all.prevalence),
            .costRatio = all.cost_ratio,
            .leastSensitivity = all.min_sensitivity,
            .leastSpecificity = all.min_specificity,
            .replicates = all.replicates,
            .seed = all.seed,
            .callbacks = {all.progress, all.user, all.cancel, all.user, all.parallel, all.user}};
}

void requireReplicates(const InferenceOptions& options)
{
    if (std::isnan(options.zCritical) || enoughReplicates(static_cast<std::size_t>(options.replicates), options.level))
        return;
    throw InvalidArgument("replicates: " + std::to_string(options.replicates) + " are too few for limits of the level "
                          + shortest(options.level) + "; take at least "
                          + shortest(std::ceil(2.0 / (1.0 - options.level) - 1.0)));
}

} // namespace ROCALG_920::calls

int vexroc_inference_defaults(vexroc_inference_options* options)
{
    using namespace ROCALG_920::calls;
    return guarded([&] { return deliver(defaults(), options); });
}
