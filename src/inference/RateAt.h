#pragma once

#include "inference/CutOffCriterion.h"
#include "inference/Proportion.h"
#include "summary/ValueWalk.h"

#include <cstdint>
#include <span>

/// Sensitivity at a fixed specificity, or the reverse, with an interval that knows that the cut-off was chosen from the
/// same data: Zhou and Qin 2005, Statist. Med. 24, 465-477 (BTII).
namespace ROCALG_920 {

/// The most cases of one state that are called right while a share of the other state is. Of counts at distinct values
/// alone, so that it serves replicates: every split between two values takes part, and both ends.
class RateAt {
public:
    /// @param kind  specificity: the sensitivity at a specificity of this share; sensitivity: the reverse
    RateAt(CutOffCriterion::Kind kind, double share, const StateCounts& cases);

    /// Right calls of values in the order in which larger ones are more positive.
    [[nodiscard]] std::int64_t reached(std::span<const DistinctValue> values) const;
    /// The rate of the curve, ties on straight lines: the upper end of a vertical step.
    [[nodiscard]] double interpolated(std::span<const DistinctValue> values) const;
    /// Cases of the state whose rate is asked for.
    [[nodiscard]] std::int64_t all() const noexcept { return all_; }

private:
    struct Reach {
        std::int64_t gained = 0;
        double part = 0.0; ///< of the value that does not fit as a whole
    };
    [[nodiscard]] Reach reach(std::span<const DistinctValue> values) const;

    bool ofSensitivity_;
    std::int64_t all_;
    double allowed_; ///< wrong calls of the other state
};

struct RateInterval {
    double stdError;
    Limits limits;
};

/// Mean -+ z standard deviations of (reached + z^2/2) / (all + z^2) over replicates, held in [0, 1].
[[nodiscard]] RateInterval rateIntervalOfMoments(std::span<const std::int64_t> reached, std::int64_t all,
                                                 double zCritical);
/// Percentiles of reached / all over replicates, which are sorted.
[[nodiscard]] RateInterval rateIntervalOfPercentiles(std::span<std::int64_t> reached, std::int64_t all, double level);

} // namespace ROCALG_920
