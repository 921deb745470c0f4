#pragma once

#include "calls/AnalysisRequest.h"
#include "calls/RunWatch.h"
#include "inference/AreaInference.h"
#include "inference/OrderedTriples.h"
#include "summary/WeightedSummary.h"
#include "vexrocproc/analysis.h"

#include <functional>
#include <optional>

namespace ROCALG_920::calls {

/// Gives the areas of records the error, the interval and the test that a request asks for.
class RecordArea {
public:
    /// The cases of a record, by the test's own scale.
    using Cases = std::function<const WeightedSummary&()>;

    /// The request outlives the object. Has the component made records of a paired comparison, with DeLong's errors?
    RecordArea(const AnalysisRequest& request, bool isOfPairedRun);

    /// Changes what the record tells, as the component made it, and names its rules. The triples are those of its
    /// cases, none without both states; the cases themselves are asked for only when a rule or weights need them.
    /// False when it was cancelled. Throws where a p is asked for that there is not for so many cases.
    [[nodiscard]] bool settle(const std::optional<OrderedTriples>& triples, const Cases& cases, RunWatch& watch,
                              vexroc_record& record) const;
    /// Can it take long?
    [[nodiscard]] bool takesLong() const noexcept;

private:
    [[nodiscard]] bool wantsDeLong() const;
    void settleError(const std::optional<OrderedTriples>& triples, vexroc_record& record) const;
    void weigh(const AreaFacts& facts, vexroc_record& record) const;
    [[nodiscard]] AreaQuestion question() const;
    [[nodiscard]] std::optional<AreaInference> answer(const AreaFacts& facts, const AreaQuestion& asked,
                                                      const Cases& cases, RunWatch& watch) const;

    const AnalysisRequest& request_;
    bool isOfPairedRun_;
    double zCritical_;
};

} // namespace ROCALG_920::calls
