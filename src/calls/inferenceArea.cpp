#include "vexrocproc/inference.h"

#include "calls/SummaryHandle.h"
#include "calls/guard.h"
#include "calls/inferenceOptions.h"
#include "calls/pieces.h"
#include "calls/words.h"
#include "inference/AreaInference.h"
#include "inference/WeightedArea.h"
#include "numeric/DefaultArithmetic.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <vector>

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

namespace ROCALG_920::calls {
namespace {

using Replicates = std::vector<std::int64_t>;

vexroc_area_result told(const AreaInference& found)
{
    return {.struct_size = 0,
            .positive = found.cases.positives,
            .negative = found.cases.negatives,
            .area = found.area,
            .std_error = found.stdError,
            .error = found.error.data(),
            .lower = found.limits.lower,
            .upper = found.limits.upper,
            .interval = areaRuleWords[static_cast<std::size_t>(found.interval)].data(),
            .edge = found.edge,
            .percentile = found.percentile,
            .held = found.held,
            .bootstrap_error = found.bootstrapError,
            .z = found.z,
            .p_value = found.p,
            .log10_p = found.log10P,
            .p_method = found.pMethod.data(),
            .freedom = found.freedom,
            .u = found.u,
            .exact_steps = found.exactSteps,
            .null_area = found.null};
}

AreaQuestion questionOf(const InferenceOptions& options, bool weighted)
{
    const AreaRule preferred = weighted ? AreaRule::logit : AreaRule::score;
    return {.interval = options.interval == nullptr ? preferred
                                                    : AreaRule(positionOf(options.interval, areaRuleWords, "interval")),
            .p = options.pMethod,
            .exact = options.exact,
            .alternative = options.alternative,
            .null = options.nullArea,
            .level = options.level,
            .zCritical = options.zCritical,
            .smallSample = options.smallSample,
            .corrected = options.corrected};
}

AreaFacts factsOf(const WeightedSummary& sample, bool largerIsPositive)
{
    if (sample.isWeighted())
        return weightedAreaFacts(Directed(sample, largerIsPositive).sample());
    return areaFacts(orderedTriples(sample.counts.walk(), sample.counts.counts()), ROCConst_920::NonParametric,
                     largerIsPositive);
}

/// Replicates of a caller, ascending.
Replicates givenReplicates(std::span<const long long> twiceU, const StateCounts& cases)
{
    const Int128 most = Int128{2} * cases.positives * cases.negatives;
    for (std::size_t i = 0; i < twiceU.size(); ++i)
        if (twiceU[i] < 0 || twiceU[i] > most)
            throw InvalidArgument("twice_u: number " + std::to_string(i) + ", " + std::to_string(twiceU[i])
                                  + ", is not between 0 and 2 P N");
    Replicates sorted(twiceU.begin(), twiceU.end());
    std::ranges::sort(sorted);
    return sorted;
}

/// Throws for a sample of which there are no replicates.
void requireDrawable(const WeightedSummary& sample)
{
    if (!sample.counts.counts().bothStates())
        throw InvalidArgument("summary: a bootstrap draws cases of both states, and there are none of one");
    const AreaFacts facts{
        .cases = sample.counts.counts(), .area = 0.0, .waldError = 0.0, .var = {}, .weighted = sample.isWeighted()};
    if (const std::string refused = refusal(facts, {.interval = AreaRule::bootstrap}); !refused.empty())
        throw InvalidArgument(refused);
}

/// The answer to a question, from these replicates or from ones that are drawn.
int answer(const WeightedSummary& summary, const InferenceOptions& options, const AreaQuestion& question,
           const AreaFacts& facts, const Replicates* given, vexroc_area_result* result)
{
    if (const std::string refused = refusal(facts, question); !refused.empty())
        throw InvalidArgument(refused);
    if (isBootstrap(question.interval))
        requireReplicates(options);
    constexpr double stepsOfADraw = 10.0;
    const bool draws = isBootstrap(question.interval) && given == nullptr;
    const double drawing =
        static_cast<double>(options.replicates) * static_cast<double>(facts.cases.cases()) * stepsOfADraw;
    const double exact = stepsOfExact(facts, question);
    RunWatch watch(options.callbacks, (draws ? drawing : 0.0) + exact);
    watch.beginPart(draws ? drawing : exact);
    std::optional<Directed> directed;
    const auto sample = [&]() -> const Summary& {
        if (!directed)
            directed.emplace(summary, options.largerIsPositive);
        return directed->counts();
    };
    const auto replicates = [&]() -> std::optional<Replicates> {
        if (given != nullptr)
            return *given;
        Replicates twiceU(static_cast<std::size_t>(options.replicates));
        if (!drawReplicates(sample(), options.seed, 0, twiceU, runnerOf(watch)))
            return std::nullopt;
        watch.beginPart(exact);
        return twiceU;
    };
    const std::optional<AreaInference> found =
        areaInference(facts, question, {sample, replicates, [&](double share) { return watch.goOn(share); }});
    return found ? deliver(told(*found), result) : fail(VEXROC_CANCELLED, "cancelled");
}

} // namespace
} // namespace ROCALG_920::calls

int vexroc_area_inference(const vexroc_summary* summary, const vexroc_inference_options* options,
                          vexroc_area_result* result)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        const WeightedSummary& sample = required(summary, "summary").sample();
        const InferenceOptions checked = inferenceOptions(options);
        return answer(sample, checked, questionOf(checked, sample.isWeighted()),
                      factsOf(sample, checked.largerIsPositive), nullptr, result);
    });
}

int vexroc_bootstrap_areas(const vexroc_summary* summary, const vexroc_inference_options* options, long long first,
                           long long count, long long* twice_u)
{
    return guarded([&]() -> int {
        const WeightedSummary& sample = required(summary, "summary").sample();
        const InferenceOptions checked = inferenceOptions(options);
        requireDrawable(sample);
        if (first < 0 || count < 0)
            throw InvalidArgument(std::string(first < 0 ? "first" : "count") + " is negative");
        if (count == 0)
            return VEXROC_OK;
        required(twice_u, "twice_u");
        Replicates drawn(static_cast<std::size_t>(count));
        RunWatch watch(checked.callbacks, 1.0);
        watch.beginPart(1.0);
        const auto tell = [&](double share) { return watch.goOn(share); };
        const Directed directed(sample, checked.largerIsPositive);
        if (!drawReplicates(directed.counts(), checked.seed, first, drawn, {nullptr, nullptr, tell}))
            return fail(VEXROC_CANCELLED, "cancelled");
        std::ranges::copy(drawn, twice_u);
        return VEXROC_OK;
    });
}

int vexroc_bootstrap_inference(const vexroc_summary* summary, const vexroc_inference_options* options,
                               long long* twice_u, long long count, vexroc_area_result* result)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        const WeightedSummary& sample = required(summary, "summary").sample();
        InferenceOptions checked = inferenceOptions(options);
        const AreaQuestion question = questionOf(checked, sample.isWeighted());
        if (!isBootstrap(question.interval))
            throw InvalidArgument("interval: replicates are for \"bootstrap\" and \"bca\"");
        if (count < 1)
            throw InvalidArgument("count: there must be replicates");
        checked.replicates = count;
        const AreaFacts facts = factsOf(sample, checked.largerIsPositive);
        const Replicates given =
            givenReplicates({&required(twice_u, "twice_u"), static_cast<std::size_t>(count)}, facts.cases);
        const int done = answer(sample, checked, question, facts, &given, result);
        if (done == VEXROC_OK)
            std::ranges::copy(given, twice_u);
        return done;
    });
}
