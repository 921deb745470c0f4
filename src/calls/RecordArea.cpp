#include "calls/RecordArea.h"

#include "calls/SummaryHandle.h"
#include "calls/guard.h"
#include "calls/pieces.h"
#include "calls/toldResults.h"
#include "inference/PlacementSums.h"
#include "inference/TestAndInterval.h"
#include "inference/WeightedArea.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ROCALG_920::calls {

using VexCommon_920::VexMV;
using namespace ROCConst_920;

namespace {

/// In the words of vexroc_area_result; wald takes the error that the record tells.
AreaRule ruleOf(IntervalKind interval, bool isWeighted)
{
    switch (interval) {
    case IntervalKind::newcombe: return AreaRule::newcombe;
    case IntervalKind::logit: return AreaRule::logit;
    case IntervalKind::bootstrap: return AreaRule::bootstrap;
    case IntervalKind::bca: return AreaRule::bca;
    case IntervalKind::waldDelong: return isWeighted ? AreaRule::waldDeLong : AreaRule::wald;
    case IntervalKind::record:
    case IntervalKind::wald: return AreaRule::wald;
    case IntervalKind::recommended:
    case IntervalKind::score: break;
    }
    return AreaRule::score;
}

/// The error that the record tells is the one that wald takes.
AreaFacts factsOf(const std::optional<OrderedTriples>& triples, const vexroc_record& record)
{
    OrderedTriples sums{};
    sums.cases = {record.positive, record.negative};
    AreaFacts facts = areaFacts(triples.value_or(sums), NonParametric, record.smaller_is_positive == 0);
    facts.waldError = record.std_error;
    return facts;
}

/// In the order of their numbers; nothing when cancelled.
std::optional<std::vector<std::int64_t>> replicatesOf(const Summary& sample, const AnalysisRequest& request,
                                                      RunWatch& watch)
{
    std::vector<std::int64_t> twiceU(static_cast<std::size_t>(request.replicates()));
    const bool done = drawReplicates(sample, request.seed(), 0, twiceU, runnerOf(watch));
    return done ? std::optional(std::move(twiceU)) : std::nullopt;
}

} // namespace

RecordArea::RecordArea(const AnalysisRequest& request, bool isOfPairedRun)
    : request_(request), isOfPairedRun_(isOfPairedRun),
      zCritical_(criticalValue(request.options().getConfidienceLevel()))
{
}

bool RecordArea::takesLong() const noexcept
{
    return isBootstrap(ruleOf(request_.interval(), false))
        || (request_.pValue() == PKind::mannWhitney && request_.exact() == ExactRule::always);
}

bool RecordArea::wantsDeLong() const
{
    return !request_.hasErrorOfDistribution()
        || (request_.interval() == IntervalKind::record && request_.rowRule().needsAllTests);
}

void RecordArea::settleError(const std::optional<OrderedTriples>& triples, vexroc_record& record) const
{
    const bool isNonparam = record.distribution_changed != 0 || request_.distribution() == NonParametric;
    const bool isDeLong = wantsDeLong();
    record.interval = isDeLong ? "delong" : isNonparam || isOfPairedRun_ ? "nonparam" : "bi-negative";
    record.error = isDeLong ? "delong" : isNonparam || isOfPairedRun_ ? "hanley-mcneil" : "bi-negative";
    record.interval_rule = isDeLong ? "wald-delong" : "wald";
    if (isDeLong != isOfPairedRun_ && triples) {
        const double stdError =
            isDeLong ? stdErrorOfVariance(deLongVariance(*triples)) : stdErrorOfArea(*triples, NonParametric);
        setArea(testArea(record.area, stdError, zCritical_), record);
    }
    if (request_.interval() != IntervalKind::record)
        dropWithoutError(record);
}

AreaQuestion RecordArea::question() const
{
    AreaQuestion question;
    question.interval = ruleOf(request_.interval(), request_.hasProbabilities());
    question.p = request_.pValue() == PKind::mannWhitney ? PRule::mannWhitney : PRule::wald;
    question.exact = request_.exact();
    question.alternative = request_.alternative();
    question.null = request_.nullArea();
    question.level = request_.options().getConfidienceLevel();
    question.zCritical = zCritical_;
    return question;
}

std::optional<AreaInference> RecordArea::answer(const AreaFacts& facts, const AreaQuestion& asked, const Cases& cases,
                                                RunWatch& watch) const
{
    const bool tells = takesLong() && !isBootstrap(asked.interval); // draws have told all of the part
    return areaInference(facts, asked,
                         {.sample = [&]() -> const Summary& { return cases().counts; },
                          .replicates = [&] { return replicatesOf(cases().counts, request_, watch); },
                          .goOn = [&](double share) { return tells ? watch.goOn(share) : !watch.cancelRequested(); }});
}

/// Area and error that weights make.
void RecordArea::weigh(const AreaFacts& facts, vexroc_record& record) const
{
    setArea(testArea(facts.area, stdErrorOfVariance(facts.variance()), zCritical_), record);
}

bool RecordArea::settle(const std::optional<OrderedTriples>& triples, const Cases& cases, RunWatch& watch,
                        vexroc_record& record) const
{
    std::optional<Directed> directed;
    const Cases inDirection = [&]() -> const WeightedSummary& {
        if (!directed)
            directed.emplace(cases(), record.smaller_is_positive == 0);
        return directed->sample();
    };
    settleError(triples, record);
    if (request_.hasProbabilities())
        record.interval = record.error = "weighted";
    const bool isWeighted = request_.hasProbabilities() && triples.has_value();
    const AreaFacts facts = isWeighted ? weightedAreaFacts(inDirection()) : factsOf(triples, record);
    if (isWeighted)
        weigh(facts, record);
    const AreaQuestion asked = question();
    if (const std::string reason = refusal(facts, asked); !reason.empty())
        throw InvalidArgument(request_.nameOf(record.test) + ": " + reason);
    const std::optional<AreaInference> found = answer(facts, asked, inDirection, watch);
    if (!found)
        return false;
    if (asked.interval != AreaRule::wald)
        tellLimits(*found, record);
    tellTest(*found, asked.alternative, record);
    if (request_.pValue() == PKind::record)
        setPOfRecord(asked.alternative, record);
    return true;
}

} // namespace ROCALG_920::calls
