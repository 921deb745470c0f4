#include "stats/ROCPairedStats.h"

#include "host/VexMV.h"
#include "inference/TestAndInterval.h"
#include "space/ROCSpace.h"

#include <tuple>

namespace ROCALG_920 {

using VexCommon_920::VexMV;

ROCPairedStats::ROCPairedStats(ROCSpace& space, bool largerTestMorePositive, double confidenceLevel)
    : space_(space), components_(space), area_(VexMV::Missing()), variance_(VexMV::Missing()),
      giniIndex_(VexMV::Missing()), asymptoticSig_(VexMV::Missing()), confidenceLevel_(confidenceLevel),
      zCritical_(criticalValue(confidenceLevel)), largerTestMorePositive_(largerTestMorePositive),
      ciLower_(VexMV::Missing()), ciUpper_(VexMV::Missing())
{
    space_.finish();
    if (space_.hasBothStates())
        computeStats();
}

bool ROCPairedStats::computeStats()
{
    area_ = components_.pairs().area(largerTestMorePositive_);
    giniIndex_ = area_ + area_ - 1;
    variance_ = components_.covarianceOf(components_.centred(components_.squares(), components_));
    const double stdError = stdErrorOfVariance(variance_);
    asymptoticSig_ = twoSidedSignificance((area_ - nullArea) / stdError);
    std::tie(ciLower_, ciUpper_) = confidenceInterval(area_, stdError, zCritical_);
    return true;
}

int ROCPairedStats::getTestVarInd() const { return space_.getTestVar(); }

std::map<double, double>& ROCPairedStats::getTxs()
{
    fillMaps();
    return txs_;
}

std::map<double, double>& ROCPairedStats::getTys()
{
    fillMaps();
    return tys_;
}

void ROCPairedStats::fillMaps()
{
    if (mapsReady_)
        return;
    txs_.clear();
    tys_.clear();
    const double nPos = space_.getPositiveCount();
    const double nNeg = space_.getNegtiveCount();
    std::int64_t positivesAbove = space_.getPositiveCount();
    std::int64_t negativesBelow = 0;
    const auto half = [](std::int64_t twice) { return 0.5 * static_cast<double>(twice); };
    if (space_.hasBothStates())
        space_.forEachDistinctValue([&](const DistinctValue& x) {
            positivesAbove -= x.positives;
            if (x.positives > 0)
                txs_.emplace_hint(txs_.end(), x.value, half(2 * negativesBelow + x.negatives) / nNeg);
            if (x.negatives > 0)
                tys_.emplace_hint(tys_.end(), x.value, half(2 * positivesAbove + x.positives) / nPos);
            negativesBelow += x.negatives;
        });
    mapsReady_ = true;
}

double phi(double a, double b) noexcept
{
    if (a > b)
        return 1.0;
    return a == b ? 0.5 : 0.0; // ties are exact
}

bool valueSort(double a, double b) noexcept { return a < b; }

double computeYWk(double y, std::vector<double> xs, int& start)
{
    const int size = static_cast<int>(xs.size());
    if (start >= size)
        return start;
    int i = start;
    int equal = 0;
    for (; i < size && xs[static_cast<std::size_t>(i)] <= y; ++i)
        equal += xs[static_cast<std::size_t>(i)] == y;
    start += equal;
    return (i - equal) + 0.5 * equal;
}

} // namespace ROCALG_920
