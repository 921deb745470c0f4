#include "calls/inferenceOptions.h"
#include "calls/replicates.h"
#include "calls/samples.h"
#include "calls/words.h"
#include "host/VexMV.h"
#include "inference/PartialArea.h"
#include "inference/PrecisionRecallArea.h"
#include "inference/Replicates.h"
#include "numeric/DefaultArithmetic.h"
#include "vexrocproc/inference.h"

#include <cmath>
#include <functional>
#include <optional>
#include <span>

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

namespace ROCALG_920::calls {
namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

constexpr std::string_view rateWords[] = {"fpr", "tpr"};
constexpr std::string_view ruleWords[] = {"integral", "step", "trapezoid"};
// The first two are those of PartialInterval and PrecisionRecallInterval.
constexpr std::string_view partialWords[] = {"logit", "wald", "bootstrap", "bca"};
constexpr std::string_view precisionRecallWords[] = {"logit", "binomial", "bootstrap", "bca"};
enum IntervalWord { logitWord, closedWord, bootstrapWord, bcaWord };

bool isBootstrap(int word) { return word == bootstrapWord || word == bcaWord; }

/// What is asked of the bootstrap of a statistic.
struct Resampled {
    std::function<double(std::span<const DistinctValue>)> statistic;
    std::function<double()> acceleration;
};

/// The interval by a bootstrap. Without both states or a level there is none, nothing when cancelled.
std::optional<BootstrapInterval> bootstrapInterval(const Summary& sample, const InferenceOptions& options, int word,
                                                   const Resampled& of)
{
    requireReplicates(options);
    if (!sample.counts().bothStates() || std::isnan(options.zCritical))
        return BootstrapInterval{missing, {missing, missing}};
    std::optional<std::vector<double>> replicates = replicatesOf(sample, options, of.statistic);
    if (!replicates)
        return std::nullopt;
    if (word == bootstrapWord)
        return percentilesOf(*replicates, options.level);
    return correctedPercentilesOf(*replicates, of.statistic(sample.values()), of.acceleration(), options.level);
}

/// Limits with what is said of them, from a closed form or from a bootstrap.
struct NamedLimits {
    Limits limits{missing, missing};
    std::string_view word;
    bool edge = false;
    bool percentile = false;
    bool held = false;
    double bootstrapError = missing;

    NamedLimits(std::span<const std::string_view> words, int word_) : word(words[static_cast<std::size_t>(word_)]) {}
    void take(const BootstrapInterval& interval, std::span<const std::string_view> words)
    {
        limits = interval.limits;
        percentile = interval.isPercentile;
        if (percentile)
            word = words[bootstrapWord];
        held = interval.heldAtEnd;
        bootstrapError = interval.stdError;
    }
};

void requireBand(double from, double to)
{
    if (!(0.0 <= from && from < to && to <= 1.0))
        throw InvalidArgument("band: expected 0 <= from < to <= 1, not from " + shortest(from) + " to " + shortest(to));
}

struct PartialQuestion {
    const Summary& sample; ///< in the direction asked for
    const InferenceOptions& options;
    Band band;
    BandRate rate;

    [[nodiscard]] PartialArea areaOf(std::span<const DistinctValue> values) const
    {
        return partialArea(values, sample.counts(), band, rate);
    }
    [[nodiscard]] double acceleration() const
    {
        PartialComponents components = partialComponents(sample, band, rate);
        if (rate == BandRate::sensitivity) { // as the sample has its values and states
            std::ranges::reverse(components.ofPositive);
            std::ranges::reverse(components.ofNegative);
            std::swap(components.ofPositive, components.ofNegative);
        }
        return accelerationOf(sample.values(), components.ofPositive, components.ofNegative);
    }
    /// Nothing when cancelled.
    [[nodiscard]] std::optional<NamedLimits> limits(const PartialArea& area) const
    {
        const int word = positionOf(options.interval, partialWords, "interval");
        NamedLimits named(partialWords, word);
        if (isBootstrap(word)) {
            const auto interval =
                bootstrapInterval(sample, options, word,
                                  {[this](std::span<const DistinctValue> values) { return areaOf(values).area; },
                                   [this] { return acceleration(); }});
            if (!interval)
                return std::nullopt;
            named.take(*interval, partialWords);
        } else {
            named.limits = partialLimits(area, PartialInterval(word), options.zCritical);
            named.edge = std::isnan(named.limits.lower) && !std::isnan(area.variance) && !std::isnan(options.zCritical);
        }
        return named;
    }
};

vexroc_partial_result told(const PartialQuestion& question, const PartialArea& area, const NamedLimits& named)
{
    const StateCounts& cases = question.sample.counts();
    const double error = std::sqrt(area.variance);
    return {.struct_size = 0,
            .from = question.band.from,
            .to = question.band.to,
            .positive = cases.positives,
            .negative = cases.negatives,
            .area = area.area,
            .std_error = error,
            .lower = named.limits.lower,
            .upper = named.limits.upper,
            .interval = named.word.data(),
            .standardized = area.standardized(area.area),
            .standardized_error = area.standardizedError(error),
            .standardized_lower = area.standardized(named.limits.lower),
            .standardized_upper = area.standardized(named.limits.upper),
            .edge = named.edge,
            .few = isFewInBand(cases, question.band, question.rate),
            .percentile = named.percentile,
            .held = named.held,
            .bootstrap_error = named.bootstrapError};
}

struct PrecisionRecallQuestion {
    const WeightedSummary& cases; ///< in the direction asked for
    const InferenceOptions& options;
    PrecisionRecallRule rule;

    [[nodiscard]] const Summary& sample() const noexcept { return cases.counts; }
    [[nodiscard]] double area() const
    {
        return cases.isWeighted() ? precisionRecallArea(cases, rule, options.prevalence) : areaOf(sample().values());
    }
    [[nodiscard]] double areaOf(std::span<const DistinctValue> values) const
    {
        return precisionRecallArea(values, sample().counts(), rule, options.prevalence);
    }
    [[nodiscard]] double acceleration() const
    {
        const CaseInfluence influence =
            precisionRecallInfluence(sample().values(), sample().counts(), rule, options.prevalence);
        return accelerationOf(sample().values(), influence.ofPositive, influence.ofNegative);
    }
    /// Nothing when cancelled.
    [[nodiscard]] std::optional<NamedLimits> limits(double area) const
    {
        const int word = positionOf(options.interval, precisionRecallWords, "interval");
        NamedLimits named(precisionRecallWords, word);
        if (cases.isWeighted()) {
            if (isBootstrap(word))
                throw InvalidArgument(
                    "interval: a bootstrap of cases with probability weights is not defined; \"logit\" "
                    "leaves the limits missing");
        } else if (isBootstrap(word)) {
            const auto interval =
                bootstrapInterval(sample(), options, word,
                                  {[this](std::span<const DistinctValue> values) { return areaOf(values); },
                                   [this] { return acceleration(); }});
            if (!interval)
                return std::nullopt;
            named.take(*interval, precisionRecallWords);
        } else if (!options.prevalence) {
            named.limits = precisionRecallLimits(area, sample().counts().positives, PrecisionRecallInterval(word),
                                                 options.zCritical);
            named.edge = (area == 0.0 || area >= 1.0) && !std::isnan(options.zCritical); // exact
        }
        return named;
    }
};

vexroc_pr_result told(const PrecisionRecallQuestion& question, double area, const NamedLimits& named)
{
    const StateCounts& cases = question.sample().counts();
    const std::optional<double>& stated = question.options.prevalence;
    const double prevalence = stated ? *stated : cases.cases() > 0 ? question.cases.shareOfPositives() : missing;
    const bool hasLowest = !stated && !question.cases.isWeighted();
    return {.struct_size = 0,
            .area = area,
            .lower = named.limits.lower,
            .upper = named.limits.upper,
            .interval = named.word.data(),
            .rule = ruleWords[static_cast<std::size_t>(question.rule)].data(),
            .prevalence = prevalence,
            .chance = prevalence,
            .lowest = hasLowest ? lowestPrecisionRecallArea(cases, question.rule) : missing,
            .positive = cases.positives,
            .negative = cases.negatives,
            .edge = named.edge,
            .percentile = named.percentile,
            .held = named.held,
            .bootstrap_error = named.bootstrapError};
}

int cancelled() { return fail(VEXROC_CANCELLED, "cancelled"); }

} // namespace
} // namespace ROCALG_920::calls

int vexroc_partial_area(const vexroc_summary* summary, const vexroc_inference_options* options, const char* rate,
                        double from, double to, vexroc_partial_result* result)
{
    return guarded([&]() -> int {
        const DefaultArithmetic arithmetic;
        requireUnweighted(summary, "a partial area");
        const InferenceOptions checked = inferenceOptions(options);
        const auto rateAsked = BandRate(positionOf(rate, rateWords, "rate"));
        requireBand(from, to);
        const Directed directed(summary->sample(), checked.largerIsPositive);
        const PartialQuestion question{directed.counts(), checked, {from, to}, rateAsked};
        const PartialArea area = question.areaOf(directed.counts().values());
        const std::optional<NamedLimits> limits = question.limits(area);
        return limits ? deliver(told(question, area, *limits), result) : cancelled();
    });
}

int vexroc_pr_area(const vexroc_summary* summary, const vexroc_inference_options* options, const char* rule,
                   vexroc_pr_result* result)
{
    return guarded([&]() -> int {
        const DefaultArithmetic arithmetic;
        const InferenceOptions checked = inferenceOptions(options);
        const auto ruleAsked = PrecisionRecallRule(positionOf(rule, ruleWords, "rule"));
        const Directed directed(required(summary, "summary").sample(), checked.largerIsPositive);
        const PrecisionRecallQuestion question{directed.sample(), checked, ruleAsked};
        const double area = question.area();
        const std::optional<NamedLimits> limits = question.limits(area);
        return limits ? deliver(told(question, area, *limits), result) : cancelled();
    });
}
