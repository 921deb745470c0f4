#include "stats/ROCPairedStats.h"

#include "host/VexMV.h"
#include "space/SpaceSummary.h"

namespace ROCALG_920 {

using VexCommon_920::VexMV;

ROCPairedStats::ROCPairedStats(ROCSpace& space, bool largerTestMorePositive, double confidenceLevel)
    : space_(space), components_(SpaceSummary(space).observations()), variance_(VexMV::Missing())
{
    SpaceSummary summary(space);
    summary.finish();
    if (!summary.counts().bothStates())
        return;
    const PlacementSums& placements = components_.placements();
    summary.keepTriples(placements.triples());
    variance_ = placements.variance();
    test_ = testArea(placements.pairs().area(largerTestMorePositive), stdErrorOfVariance(variance_),
                     criticalValue(confidenceLevel));
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
    const SpaceSummary summary(space_);
    const double nPos = static_cast<double>(summary.counts().positives);
    const double nNeg = static_cast<double>(summary.counts().negatives);
    PlacementSums placements(summary.counts());
    const auto take = [&](const DistinctValue& x) {
        const PlacementSums::Twice twice = placements.add(x);
        if (x.positives > 0)
            txs_.emplace_hint(txs_.end(), x.value, 0.5 * static_cast<double>(twice.ofPositive) / nNeg);
        if (x.negatives > 0)
            tys_.emplace_hint(tys_.end(), x.value, 0.5 * static_cast<double>(twice.ofNegative) / nPos);
    };
    if (summary.counts().bothStates())
        summary.withWalk([&](const auto& walk) { forEachValue(walk, take); });
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
