#include "stats/ROCIndependentStats.h"

#include "inference/OrderedTriples.h"
#include "space/SpaceSummary.h"

namespace ROCALG_920 {

ROCIndependentStats::ROCIndependentStats(ROCSpace& space, ROCConst_920::Distribution distribution,
                                         bool largerTestMorePositive, double confidenceLevel)
    : space_(space)
{
    SpaceSummary summary(space);
    summary.finish();
    if (!summary.counts().bothStates())
        return;
    const OrderedTriples triples =
        summary.withWalk([&](const auto& walk) { return orderedTriples(walk, summary.counts()); });
    summary.orderByState();
    summary.keepTriples(triples);
    test_ = testArea(triples.pairs.area(largerTestMorePositive), stdErrorOfArea(triples, distribution),
                     criticalValue(confidenceLevel));
}

int ROCIndependentStats::getTestVarInd() const { return space_.getTestVar(); }

} // namespace ROCALG_920
