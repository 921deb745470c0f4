#pragma once

#include "host/MultiPassRecordIter.h"
#include "host/VexVarList.h"
#include "space/ROCSpace.h"
#include "summary/RowRule.h"
#include "vexrocproc/ROCConst.h"
#include "vexrocproc/ROCSetting.h"

#include <vector>

namespace ROCALG_920 {

/// How a group variable splits the cases of every test variable into spaces.
class GroupSplit {
public:
    /// All cases in one group, without a group variable.
    GroupSplit() = default;
    /// As the settings ask, groupVar >= 0. The middle of a range that the host does not know takes a pass over the
    /// records, which ends with a new one. Throws what the host's list throws for a variable that it does not know.
    GroupSplit(const ROCSetting& setting, const VexXML_920::VexVarList& variables,
               VexCommon_920::MultiPassRecordIter& records, int groupVar);

    [[nodiscard]] int groupVar() const noexcept { return groupVar_; }
    [[nodiscard]] const GroupValues& values() const noexcept { return values_; }
    /// Can the variable be split as asked? If not, there is nothing to do but to ignore it.
    [[nodiscard]] bool isDefined() const noexcept { return !values_.values.empty(); }
    /// Copies of an empty space, one per group, that carry the group they stand for.
    [[nodiscard]] std::vector<ROCSpace> spacesLike(const ROCSpace& empty) const;

private:
    int groupVar_ = -1;
    GroupValues values_;
};

} // namespace ROCALG_920
