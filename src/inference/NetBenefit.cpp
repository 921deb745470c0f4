#include "inference/NetBenefit.h"

#include "host/VexMV.h"
#include "inference/OperatingPoint.h"
#include "inference/Proportion.h"

#include <cmath>

namespace ROCALG_920 {

double netBenefit(const CutOffCounts& counts, double threshold, std::optional<double> prevalence) noexcept
{
    const double odds = threshold / (1.0 - threshold);
    const std::int64_t all = counts.positives() + counts.negatives();
    if (!prevalence)
        return share(counts.truePositives, all) - share(counts.falsePositives, all) * odds;
    return sensitivity(counts) * *prevalence
        - share(counts.falsePositives, counts.negatives()) * (1.0 - *prevalence) * odds;
}

Calibration calibration(const Summary& sample) noexcept
{
    constexpr double most = 3.0;
    const std::int64_t all = sample.counts().cases();
    if (all == 0) {
        constexpr double missing = VexCommon_920::VexMV::Missing();
        return {missing, missing, missing, false};
    }
    double sum = 0.0;
    for (const DistinctValue& x : sample.values())
        sum += x.value * static_cast<double>(x.positives + x.negatives);
    const double mean = sum / static_cast<double>(all);
    const double observed = share(sample.counts().positives, all);
    const double error = std::sqrt(mean * (1.0 - mean) / static_cast<double>(all));
    return {mean, observed, error, std::abs(mean - observed) > most * error};
}

} // namespace ROCALG_920
