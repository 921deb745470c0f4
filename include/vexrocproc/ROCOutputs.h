#pragma once

#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <iosfwd>
#include <vector>

namespace VexXML_920 {
class VexVarList;
}

namespace ROCALG_920 {

/// The result set of one analysis: its records and comparisons, in the order in which they were made.
///
/// It owns nothing: the records belong to the driver that made the set, the variable list to the host. All must
/// outlive it. The lists never change.
class [[gnu::visibility("default")]] ROCOutputs
{
public:
    ROCOutputs(VexXML_920::VexVarList & varList, std::vector<ROCOutBase*> baseStats,
               std::vector<ROCComparisonOutStats*> comparisonStats);
    virtual ~ROCOutputs();
    ROCOutputs(const ROCOutputs&) = delete;
    ROCOutputs& operator=(const ROCOutputs&) = delete;

    /// One record per test variable and group.
    [[nodiscard]] const std::vector<ROCOutBase*>& getROCBaseStats() const noexcept { return baseStats_; }
    /// One record per compared pair; empty without a comparison.
    [[nodiscard]] const std::vector<ROCComparisonOutStats*>& getROCComparisonStats() const noexcept
    {
        return comparisonStats_;
    }

    /// Writes all comparisons with the records that they compare, or, without a comparison, all records.
    void Display(std::ostream & out) const;

private:
    std::vector<ROCOutBase*> baseStats_;
    std::vector<ROCComparisonOutStats*> comparisonStats_;
    const VexXML_920::VexVarList& varList_;
};

} // namespace ROCALG_920
