#pragma once

#include "inference/Proportion.h"
#include "summary/ValueWalk.h"

/// Intervals and tests of one area beside those of the specified records.
namespace ROCALG_920 {

/// What the intervals of an area are made of.
struct AreaEstimate {
    StateCounts cases; ///< both states occur
    double area;
    double deLongVariance; ///< not a number with a single case of a state
};

enum class AreaInterval {
    waldDeLong, ///< area -+ z sqrt(variance)
    logit,      ///< Pepe 2003; Qin and Hotilovac 2008, Statist. Meth. Med. Res. 17, 207-221
    newcombe,   ///< Newcombe 2006, Statist. Med. 25, 559-573, method 5
    score,      ///< newcombe with the variance of DeLong where it is the larger one
};

/// The interval; limits that the definition leaves open are missing: those of logit at an area of 0 or 1 or without
/// variance.
[[nodiscard]] Limits areaLimits(const AreaEstimate& estimate, AreaInterval interval, double zCritical) noexcept;

enum class Alternative { twoSided, greater, less };

/// A p, and its decimal logarithm also where p underflows.
struct PValue {
    double p;
    double log10;
};
/// Of a standard normal z.
[[nodiscard]] PValue pOfNormal(double z, Alternative alternative) noexcept;
/// Of Student's t.
[[nodiscard]] PValue pOfStudent(double t, double freedom, Alternative alternative) noexcept;

/// (area - null) / error. A distance of 0 over an error of 0 is 0, any other is infinite.
[[nodiscard]] double zOfArea(double area, double null, double stdError) noexcept;

} // namespace ROCALG_920
