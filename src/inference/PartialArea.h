#pragma once

#include "inference/Proportion.h"
#include "summary/Summary.h"

#include <vector>

/// The area under a band of the ROC curve, with the error that an estimated border leaves: McClish 1989 (Med. Decis.
/// Making 9, 190-195); Wieand and others 1989 (Biometrika 76, 585-592); He and Escobar 2008 (Statist. Med. 27,
/// 5291-5308). Right of a band of sensitivities: Jiang, Metz and Nishikawa 1996 (Radiology 201, 745-750).
///
/// Every case adds to the area what the definition calls its component: for a positive case of value x, with F
/// negatives above and f at x, and c = e N negatives of the band up to a border e, it is
///   G(e) = (c - F - f/2) / N where all of f are in the band, (c - F)^2 / (2 f N) where a part of them is, else 0,
/// of the upper border less that of the lower one. The component of a negative case is what the area changes with it,
/// the border included: H(e) = (sum of p w over lower values + p w^2 / 2) / P, w the share of f that is in the band, of
/// the lower border less that of the upper one. For the band [0, 1] both are DeLong's.
namespace ROCALG_920 {

/// 0 <= from < to <= 1
struct Band {
    double from;
    double to;
};

enum class BandRate {
    falsePositive, ///< the area is under the curve
    sensitivity,   ///< the area is right of the curve
};

struct PartialArea {
    double area;
    double variance; ///< not a number with a single case of a state
    double low;      ///< the area below the diagonal in the band
    double width;    ///< of the band: the largest area

    /// McClish: 1/2 on the diagonal, 1 at the top.
    [[nodiscard]] double standardized(double x) const noexcept { return (1.0 + (x - low) / (width - low)) / 2.0; }
    /// Of the standard error.
    [[nodiscard]] double standardizedError(double error) const noexcept { return error / (2.0 * (width - low)); }
};

/// A sample whose larger values are more positive, as a band of rates sees it: for one of sensitivities from the other
/// side, values negated and states exchanged.
class BandWalk {
public:
    BandWalk(std::span<const DistinctValue> values, BandRate rate)
        : next_(values.data() + (rate == BandRate::falsePositive ? 0 : values.size())), left_(values.size()),
          rate_(rate)
    {
    }
    [[nodiscard]] bool next(DistinctValue& x) noexcept
    {
        if (left_ == 0)
            return false;
        --left_;
        if (rate_ == BandRate::falsePositive) {
            x = *next_++;
        } else {
            --next_;
            x = {0.0 - next_->value, next_->negatives, next_->positives};
        }
        return true;
    }

private:
    const DistinctValue* next_;
    std::size_t left_;
    BandRate rate_;
};

/// Missing without both states. Larger values are more positive: negate the others.
[[nodiscard]] PartialArea partialArea(std::span<const DistinctValue> values, const StateCounts& cases, Band band,
                                      BandRate rate = BandRate::falsePositive);

/// The components of the cases of every distinct value, in the order of a BandWalk.
struct PartialComponents {
    std::vector<double> ofPositive; ///< of what the band takes for positive: exchanged for one of sensitivities
    std::vector<double> ofNegative;
};
[[nodiscard]] PartialComponents partialComponents(const Summary& sample, Band band, BandRate rate);

enum class PartialInterval {
    logit, ///< of the share of the band that the area is; missing on the edge
    wald,  ///< area -+ z times the error
};
[[nodiscard]] Limits partialLimits(const PartialArea& area, PartialInterval interval, double zCritical) noexcept;

/// Does the band hold fewer than 5 of the cases that it is a share of?
[[nodiscard]] bool isFewInBand(const StateCounts& cases, Band band, BandRate rate) noexcept;

/// A share of so many cases as a number of them: the whole number that it misses by rounding alone, if there is one.
[[nodiscard]] double casesOfShare(double share, std::int64_t all) noexcept;

} // namespace ROCALG_920
