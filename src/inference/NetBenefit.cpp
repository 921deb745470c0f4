#include "inference/NetBenefit.h"

#include "host/VexMV.h"
#include "inference/OperatingPoint.h"
#include "inference/Proportion.h"

#include <cmath>

namespace ROCALG_920 {

namespace {

/// In the sample, or with its states mixed as the stated prevalence says.
double meanScore(const Summary& sample, std::optional<double> prevalence) noexcept
{
    const StateCounts& cases = sample.counts();
    double all = 0.0;
    double ofPositives = 0.0;
    double ofNegatives = 0.0;
    for (const DistinctValue& x : sample.values()) {
        all += x.value * static_cast<double>(x.positives + x.negatives);
        ofPositives += x.value * static_cast<double>(x.positives);
        ofNegatives += x.value * static_cast<double>(x.negatives);
    }
    if (!prevalence)
        return all / static_cast<double>(cases.cases());
    return *prevalence * (ofPositives / static_cast<double>(cases.positives))
        + (1.0 - *prevalence) * (ofNegatives / static_cast<double>(cases.negatives));
}

} // namespace

double netBenefit(const CutOffCounts& counts, double threshold, std::optional<double> prevalence) noexcept
{
    const double odds = threshold / (1.0 - threshold);
    const std::int64_t all = counts.positives() + counts.negatives();
    if (!prevalence)
        return share(counts.truePositives, all) - share(counts.falsePositives, all) * odds;
    return sensitivity(counts) * *prevalence
        - share(counts.falsePositives, counts.negatives()) * (1.0 - *prevalence) * odds;
}

Calibration calibration(const Summary& sample, std::optional<double> prevalence) noexcept
{
    constexpr double most = 3.0;
    const StateCounts& cases = sample.counts();
    const bool known = prevalence ? cases.positives > 0 && cases.negatives > 0 : cases.cases() > 0;
    if (!known) {
        constexpr double missing = VexCommon_920::VexMV::Missing();
        return {missing, missing, missing, false};
    }
    const double mean = meanScore(sample, prevalence);
    const double observed = prevalence ? *prevalence : share(cases.positives, cases.cases());
    const double error = std::sqrt(mean * (1.0 - mean) / static_cast<double>(cases.cases()));
    return {mean, observed, error, std::abs(mean - observed) > most * error};
}

} // namespace ROCALG_920
