#include "inference/AreaInference.h"

#include "host/VexMV.h"
#include "inference/Bootstrap.h"
#include "inference/MannWhitney.h"
#include "inference/TestAndInterval.h"
#include "numeric/elementary.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace ROCALG_920 {

namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();
constexpr double mostStepsUnasked = 4e6;
constexpr double mostSteps = 1e11;

PRule usedRule(const AreaFacts& facts, const AreaQuestion& question)
{
    constexpr double even = 0.5;
    if (question.p != PRule::recommended)
        return question.p;
    return facts.weighted || question.null != even ? PRule::wald : PRule::mannWhitney;
}

bool isExact(const AreaFacts& facts, const AreaQuestion& question)
{
    return question.exact == ExactRule::always
        || (question.exact == ExactRule::automatic && exactSteps(facts.cases) <= mostStepsUnasked);
}

std::string rounded(double number)
{
    std::array<char, 32> digits;
    return {digits.data(),
            std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, 2).ptr};
}

std::string refusalOfWeights(const AreaQuestion& question)
{
    if (question.interval != AreaRule::logit && question.interval != AreaRule::waldDeLong)
        return "interval: with probability weights there are \"logit\" and \"wald-delong\" only, by the variance of "
               "Binder 1983; cases alone do not tell what the others ask of the sample";
    if (question.p == PRule::mannWhitney)
        return "p_method: mann-whitney is not defined for probability weights; take \"wald\"";
    if (question.smallSample)
        return "small_sample is not defined for probability weights";
    return {};
}

std::string refusalOfExact(const StateCounts& cases)
{
    constexpr double stepsPerMinute = 3e11;
    const double steps = exactSteps(cases);
    if (steps <= mostSteps)
        return {};
    return "exact: this p takes " + rounded(steps) + " steps, some " + rounded(std::ceil(steps / stepsPerMinute))
        + " minutes, and there may be 1e11; \"auto\" takes the normal distribution here";
}

std::string refusalOfBootstrap(const StateCounts& cases)
{
    constexpr auto mostTwicePairs = Int128{std::numeric_limits<std::int64_t>::max()};
    constexpr std::int64_t mostOfAState = std::numeric_limits<std::uint32_t>::max();
    const bool fits = cases.positives <= mostOfAState && cases.negatives <= mostOfAState
        && Int128{2} * cases.positives * cases.negatives <= mostTwicePairs;
    return fits ? ""
                : "interval: too many cases for a bootstrap, whose replicates of 2 P N area are integers of 64 bits";
}

void setMissing(AreaInference& result)
{
    result.area = result.stdError = result.limits.lower = result.limits.upper = missing;
    result.p = result.log10P = result.u = result.exactSteps = missing;
}

AreaInference named(const AreaFacts& facts, const AreaQuestion& question)
{
    const bool byMannWhitney = usedRule(facts, question) == PRule::mannWhitney;
    AreaInference result{.cases = facts.cases,
                         .area = facts.area,
                         .stdError = std::sqrt(facts.variance()),
                         .error = facts.weighted ? "weighted" : "delong",
                         .limits = {missing, missing},
                         .interval = question.interval,
                         .bootstrapError = missing,
                         .z = missing,
                         .p = missing,
                         .log10P = missing,
                         .pMethod = byMannWhitney ? "mann-whitney" : "wald",
                         .freedom = missing,
                         .u = facts.weighted ? missing : static_cast<double>(facts.twiceU) / 2.0,
                         .exactSteps = facts.weighted ? missing : exactSteps(facts.cases),
                         .null = question.null};
    if (question.interval == AreaRule::wald) {
        result.stdError = facts.waldError;
        result.error = "hanley-mcneil";
    }
    return result;
}

/// The limits that are made of a variance.
Limits limitsBy(AreaInterval interval, const AreaFacts& facts, const AreaQuestion& question)
{
    return areaLimits({facts.cases, facts.area, facts.variance()}, interval, question.zCritical);
}

void setLimits(const AreaFacts& facts, const AreaQuestion& question, AreaInference& result)
{
    switch (question.interval) {
    case AreaRule::score: result.limits = limitsBy(AreaInterval::score, facts, question); return;
    case AreaRule::newcombe: result.limits = limitsBy(AreaInterval::newcombe, facts, question); return;
    case AreaRule::waldDeLong:
        if (result.stdError != 0.0) // exact; without error they would claim to know
            result.limits = limitsBy(AreaInterval::waldDeLong, facts, question);
        return;
    case AreaRule::logit:
        if (facts.area != 0.0 && facts.area != 1.0 && facts.variance() != 0.0) { // exact
            result.limits = limitsBy(AreaInterval::logit, facts, question);
        } else if (!facts.weighted) {
            result.edge = true;
            result.interval = AreaRule::score;
            result.limits = limitsBy(AreaInterval::score, facts, question);
        }
        return;
    case AreaRule::wald:
        if (result.stdError != 0.0) { // exact
            const auto [lower, upper] = confidenceInterval(facts.area, facts.waldError, question.zCritical);
            result.limits = {lower, upper};
        }
        return;
    case AreaRule::bootstrap:
    case AreaRule::bca: return; // by replicates
    }
}

/// False when cancelled.
bool setBootstrap(const AreaQuestion& question, const AreaMeans& means, AreaInference& result)
{
    constexpr double anyLevel = 0.5;
    std::optional<std::vector<std::int64_t>> replicates = means.replicates();
    if (!replicates)
        return false;
    const bool hasLevel = !std::isnan(question.zCritical);
    const double level = hasLevel ? question.level : anyLevel;
    const BootstrapInterval found = question.interval == AreaRule::bca
        ? bcaInterval(*replicates, means.sample(), level)
        : percentileInterval(*replicates, result.cases, level);
    result.bootstrapError = found.stdError;
    if (!hasLevel)
        return true;
    result.limits = found.limits;
    result.held = found.heldAtEnd;
    result.percentile = found.isPercentile;
    if (found.isPercentile)
        result.interval = AreaRule::bootstrap;
    return true;
}

/// False when cancelled.
bool setMannWhitney(const AreaFacts& facts, const AreaQuestion& question, const AreaMeans& means, AreaInference& result)
{
    if (!isExact(facts, question)) {
        const MannWhitney test =
            mannWhitney(facts.cases, facts.twiceU, facts.tieSum, question.alternative, question.corrected);
        result.z = test.z;
        result.p = test.p.p;
        result.log10P = test.p.log10;
        return true;
    }
    const std::optional<double> p = exactMannWhitney(means.sample(), question.alternative, means.goOn);
    if (!p)
        return false;
    result.p = *p;
    result.log10P = static_cast<double>(logarithm(*p) / logTen);
    result.pMethod = "mann-whitney-exact";
    return true;
}

/// Degrees of freedom of two means of unequal variances: Brunner and Munzel 2000, Biometrical J. 42, 17-25.
double freedomOf(const AreaFacts& facts)
{
    const auto [a, b] = facts.var;
    return facts.variance() * facts.variance()
        / (a * a / static_cast<double>(facts.cases.positives - 1)
           + b * b / static_cast<double>(facts.cases.negatives - 1));
}

void setWald(const AreaFacts& facts, const AreaQuestion& question, AreaInference& result)
{
    const bool byStudent = question.smallSample && question.interval != AreaRule::wald;
    if (byStudent)
        result.pMethod = "wald-t";
    if (result.stdError == 0.0) // exact
        return;
    result.z = zOfArea(facts.area, question.null, result.stdError);
    PValue p = pOfNormal(result.z, question.alternative);
    if (byStudent) {
        result.freedom = freedomOf(facts);
        p = pOfStudent(result.z, result.freedom, question.alternative);
    }
    result.p = p.p;
    result.log10P = p.log10;
}

} // namespace

AreaFacts areaFacts(const OrderedTriples& sums, ROCConst_920::Distribution distribution, bool largerIsPositive)
{
    if (!sums.cases.bothStates())
        return {.cases = sums.cases, .area = missing, .waldError = missing, .var = {missing, missing}};
    const Int128 ordered = sums.pairs.twiceOrdered;
    return {.cases = sums.cases,
            .area = sums.pairs.area(largerIsPositive),
            .waldError = stdErrorOfArea(sums, distribution),
            .var = deLongTerms(sums),
            .twiceU = largerIsPositive ? ordered : sums.pairs.twicePairs - ordered,
            .tieSum = sums.tieSums.cubes};
}

std::string refusal(const AreaFacts& facts, const AreaQuestion& question)
{
    constexpr double even = 0.5;
    if (facts.weighted)
        return refusalOfWeights(question);
    if (question.p == PRule::mannWhitney && question.null != even)
        return "null_area: mann-whitney tests against 0.5 alone; take p_method \"wald\"";
    if (usedRule(facts, question) == PRule::mannWhitney && question.exact == ExactRule::always)
        if (std::string refused = refusalOfExact(facts.cases); !refused.empty())
            return refused;
    return isBootstrap(question.interval) ? refusalOfBootstrap(facts.cases) : std::string();
}

double stepsOfExact(const AreaFacts& facts, const AreaQuestion& question)
{
    const bool byExact = usedRule(facts, question) == PRule::mannWhitney && isExact(facts, question);
    return byExact ? exactSteps(facts.cases) : 0.0;
}

std::optional<AreaInference> areaInference(const AreaFacts& facts, const AreaQuestion& question, const AreaMeans& means)
{
    AreaInference result = named(facts, question);
    if (!facts.cases.bothStates()) {
        setMissing(result);
        return result;
    }
    setLimits(facts, question, result);
    if (isBootstrap(question.interval) && !setBootstrap(question, means, result))
        return std::nullopt;
    if (usedRule(facts, question) == PRule::wald)
        setWald(facts, question, result);
    else if (!setMannWhitney(facts, question, means, result))
        return std::nullopt;
    return result;
}

} // namespace ROCALG_920
