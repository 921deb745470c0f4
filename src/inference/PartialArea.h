#pragma once

#include "inference/Proportion.h"
#include "summary/Summary.h"

#include <vector>

/// The area under a band of the ROC curve, with the error that an estimated border leaves.
namespace ROCALG_920 {

/// A band of false positive rates, 0 <= from < to <= 1.
struct Band {
    double from;
    double to;
};

/// What every case of a distinct value adds to the area, and what the area changes with it. For the band [0, 1] these
/// are DeLong's components.
struct PartialComponents {
    std::vector<double> ofPositive; ///< V, parallel to the distinct values
    std::vector<double> ofNegative; ///< W
};

struct PartialArea {
    double area;
    double variance;     ///< not a number with a single case of a state
    double standardized; ///< McClish: 1/2 on the diagonal, 1 at the top
    double scale;        ///< of errors and limits of the standardized area: 1 / (2 ((to - from) - low))
};

/// The integral of the empirical curve, ties on straight lines, over the band, and its variance: McClish 1989 (Med.
/// Decis. Making 9, 190-195); Wieand and others 1989 (Biometrika 76, 585-592); He and Escobar 2008 (Statist. Med. 27,
/// 5291-5308). Missing without both states. Larger values are more positive: negate the others.
[[nodiscard]] PartialArea partialArea(const Summary& sample, Band band);

/// The same right of the curve, over a band of sensitivities: Jiang, Metz and Nishikawa 1996 (Radiology 201, 745-750).
[[nodiscard]] PartialArea partialAreaOfSensitivities(const Summary& sample, Band band);

[[nodiscard]] PartialComponents partialComponents(const Summary& sample, Band band);

enum class PartialInterval {
    wald,  ///< area -+ z times the error
    logit, ///< the same of the logit of the share of the band that the area is; missing on the edge
};
[[nodiscard]] Limits partialLimits(const PartialArea& area, Band band, PartialInterval interval,
                                   double zCritical) noexcept;

/// A share of so many cases as a number of them: the whole number that it misses by rounding alone, if there is one.
[[nodiscard]] double casesOfShare(double share, std::int64_t all) noexcept;

} // namespace ROCALG_920
