#pragma once

#include <iosfwd>

namespace VexXML_920 {
class VexVarList;
}

namespace ROCALG_920 {

class ROCComparisonStats;
class ROCOutBase;

/// Result of the comparison of two areas: the difference (first minus second) with its z statistic, significance,
/// standard error and confidence interval.
///
/// Life: complete when the constructor returns, and never changes. It points at the records of the two areas, which
/// must outlive it; the comparison may go. The driver that made it owns it.
/// Failure: told by values. The difference is missing when an area is, its standard error when a standard error is;
/// the other values are those of the comparison, missing when it could not be computed.
class [[gnu::visibility("default")]] ROCComparisonOutStats
{
public:
    /// From a comparison whose computeStats has run on the two areas in this order.
    ROCComparisonOutStats(ROCOutBase & first, ROCOutBase & second, ROCComparisonStats & comparison);

    /// z statistic of the difference.
    [[nodiscard]] double getZStats() const noexcept { return zStats_; }
    /// Two-sided significance of z.
    [[nodiscard]] double getAsymptoticSig() const noexcept { return asymptoticSig_; }
    /// Area of the first record minus area of the second.
    [[nodiscard]] double getAUCDiff() const noexcept { return aucDiff_; }
    /// Standard error of the difference; exactly 0 for a variable against itself.
    [[nodiscard]] double getStdErrorDiff() const noexcept { return stdErrorDiff_; }
    [[nodiscard]] double getCILower() const noexcept { return ciLower_; }
    [[nodiscard]] double getCIUpper() const noexcept { return ciUpper_; }
    /// The record of the first area. Not owned.
    [[nodiscard]] ROCOutBase* getCompare1Stats() const noexcept { return compare1_; }
    /// The record of the second area. Not owned.
    [[nodiscard]] ROCOutBase* getCompare2Stats() const noexcept { return compare2_; }

    /// Writes both records and the comparison as text, see ROCOutBase::Display.
    void Display(std::ostream & out, const VexXML_920::VexVarList& varList) const;

private:
    ROCOutBase* compare1_;
    ROCOutBase* compare2_;
    double zStats_;
    double asymptoticSig_;
    double aucDiff_;
    double stdErrorDiff_;
    double ciLower_;
    double ciUpper_;
};

} // namespace ROCALG_920
