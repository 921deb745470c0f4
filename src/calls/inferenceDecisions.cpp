#include "calls/inferenceOptions.h"
#include "calls/samples.h"
#include "inference/CutOffLookup.h"
#include "inference/NetBenefit.h"
#include "numeric/DefaultArithmetic.h"
#include "vexrocproc/inference.h"

#include <cmath>
#include <cstddef>
#include <string>

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

namespace ROCALG_920::calls {
namespace {

/// Values in ascending order decide by their ends.
void requireRisks(const Summary& sample)
{
    if (sample.values().empty())
        return;
    const double lowest = sample.values().front().value;
    const double highest = sample.values().back().value;
    if (lowest < 0.0 || highest > 1.0)
        throw InvalidArgument("summary: test values must be probabilities, from 0 to 1, and there is "
                              + shortest(lowest < 0.0 ? lowest : highest));
}

void requireThresholds(const double* thresholds, long long count)
{
    if (count < 0)
        throw InvalidArgument("count is negative");
    if (count > 0)
        required(thresholds, "thresholds");
    for (long long i = 0; i < count; ++i)
        if (!(thresholds[i] > 0.0 && thresholds[i] < 1.0))
            throw InvalidArgument("thresholds: number " + std::to_string(i) + " is "
                                  + (std::isnan(thresholds[i]) ? "NaN" : shortest(thresholds[i]))
                                  + "; a threshold lies between 0 and 1");
}

} // namespace
} // namespace ROCALG_920::calls

int vexroc_net_benefit(const vexroc_summary* summary, const vexroc_inference_options* options, const double* thresholds,
                       long long count, double* model, double* treat_all, long long* true_positive,
                       long long* false_positive)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        const Summary& sample = unweighted(summary, "a net benefit");
        const InferenceOptions checked = inferenceOptions(options);
        if (!checked.largerIsPositive)
            throw InvalidArgument("smaller_is_positive: a net benefit takes test values for probabilities of the "
                                  "positive state, larger ones being more positive");
        requireThresholds(thresholds, count);
        requireBothStates(sample);
        requireRisks(sample);
        const CutOffLookup lookup(sample, {true, true}); // a score of the threshold is on the positive side
        const StateCounts& cases = sample.counts();
        const CutOffCounts all{cases.positives, cases.negatives, 0, 0};
        for (long long i = 0; i < count; ++i) {
            const CutOffCounts counts = lookup.at(thresholds[i]);
            const auto place = static_cast<std::size_t>(i);
            put(model, place, netBenefit(counts, thresholds[i], checked.prevalence));
            put(treat_all, place, netBenefit(all, thresholds[i], checked.prevalence));
            put(true_positive, place, counts.truePositives);
            put(false_positive, place, counts.falsePositives);
        }
        return VEXROC_OK;
    });
}

int vexroc_calibration(const vexroc_summary* summary, const vexroc_inference_options* options,
                       vexroc_calibration_result* result)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        const Summary& sample = unweighted(summary, "the agreement of scores with cases");
        requireRisks(sample);
        const Calibration found = calibration(sample, inferenceOptions(options).prevalence);
        return deliver({.struct_size = 0,
                        .mean_score = found.meanScore,
                        .observed = found.observed,
                        .std_error = found.stdError,
                        .differs = found.differs},
                       result);
    });
}
