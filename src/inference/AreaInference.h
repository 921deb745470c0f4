#pragma once

#include "inference/AreaIntervals.h"
#include "inference/OrderedTriples.h"
#include "inference/PlacementSums.h"
#include "numeric/Int128.h"
#include "summary/Summary.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Interval and test of one area by any of the rules, from sums that whoever has the area has already.
namespace ROCALG_920 {

/// How the interval is made. The words that callers know, in this order: see areaRuleWords.
enum class AreaRule { score, newcombe, logit, wald, waldDeLong, bootstrap, bca };
inline constexpr std::string_view areaRuleWords[] = {"score",       "newcombe",  "logit", "wald",
                                                     "wald-delong", "bootstrap", "bca"};
enum class PRule { recommended, mannWhitney, wald };
inline constexpr std::string_view pRuleWords[] = {"recommended", "mann-whitney", "wald"};
enum class ExactRule { automatic, always, never };
inline constexpr std::string_view exactRuleWords[] = {"auto", "always", "never"};
inline constexpr std::string_view alternativeWords[] = {"two-sided", "greater", "less"};

[[nodiscard]] constexpr bool isBootstrap(AreaRule rule) noexcept
{
    return rule == AreaRule::bootstrap || rule == AreaRule::bca;
}

/// What the sums over a sample say of its area. In the direction asked for: larger values are more positive, or the
/// values are taken as negated.
struct AreaFacts {
    StateCounts cases;
    double area;             ///< any number without both states
    double waldError;        ///< the error that the interval wald is made of
    SumsByState<double> var; ///< the two terms of DeLong's variance, or of that of weights; NaN with a single case
    Int128 twiceU = 0;       ///< 2 P N area; nothing with weights
    Int128 tieSum = 0;       ///< of t^3 - t over the distinct values, t their cases; nothing with weights
    bool weighted = false;   ///< by probability weights: logit and wald-delong, and p by wald, are all there is

    [[nodiscard]] double variance() const noexcept { return var.positives + var.negatives; }
};
/// From the sums of a walk over the values, on which the direction has no influence.
[[nodiscard]] AreaFacts areaFacts(const OrderedTriples& sums, ROCConst_920::Distribution distribution,
                                  bool largerIsPositive);

struct AreaQuestion {
    AreaRule interval = AreaRule::score;
    PRule p = PRule::recommended;
    ExactRule exact = ExactRule::automatic;
    Alternative alternative = Alternative::twoSided;
    double null = 0.5;
    double level = 0.95;
    double zCritical = 1.959963984540054; ///< of the level; missing: without limits
    bool smallSample = false;             ///< wald by DeLong's error takes Student's t
    bool corrected = true;                ///< mann-whitney by the normal distribution
};

/// What only some questions need; each is asked for at most once.
struct AreaMeans {
    /// The sample in the direction asked for; it outlives the call.
    std::function<const Summary&()> sample;
    /// All replicates of 2 U, or nothing when cancelled.
    std::function<std::optional<std::vector<std::int64_t>>()> replicates;
    /// Told the share of an exact p that is done; false cancels. May be empty.
    std::function<bool(double)> goOn;
};

struct AreaInference {
    StateCounts cases;
    double area;
    double stdError;
    std::string_view error; ///< "delong", "hanley-mcneil", "weighted": a literal, ends with a 0
    Limits limits;
    AreaRule interval;       ///< that the limits are by
    bool edge = false;       ///< logit is not defined here: the limits are those of score; never with weights
    bool percentile = false; ///< bca is not defined here: the limits are those of bootstrap
    bool held = false;       ///< a limit is the first or last replicate, for want of more
    double bootstrapError;
    double z; ///< missing for an exact p
    double p;
    double log10P;
    std::string_view pMethod; ///< "mann-whitney-exact", "mann-whitney", "wald", "wald-t": likewise a literal
    double freedom;           ///< of wald-t
    double u;
    double exactSteps;
    double null;
};

/// Why a question has no answer for such a sample; empty where it has. To be asked before areaInference.
[[nodiscard]] std::string refusal(const AreaFacts& facts, const AreaQuestion& question);

/// Steps of the exact p that the question is answered by; 0 without one.
[[nodiscard]] double stepsOfExact(const AreaFacts& facts, const AreaQuestion& question);

/// Missing without both states, but for names and counts. Nothing when cancelled. Throws std::bad_alloc.
[[nodiscard]] std::optional<AreaInference> areaInference(const AreaFacts& facts, const AreaQuestion& question,
                                                         const AreaMeans& means);

} // namespace ROCALG_920
