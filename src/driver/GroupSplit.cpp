#include "driver/GroupSplit.h"

#include "host/VexMV.h"

namespace ROCALG_920 {

std::vector<ROCSpace> GroupSplit::spacesLike(const ROCSpace& empty) const
{
    std::vector<ROCSpace> spaces;
    const auto add = [&](ROCConst_920::Operation op, double value) {
        spaces.push_back(empty);
        spaces.back().setGroup(groupVar_, op, value);
    };
    if (groupVar_ < 0) {
        add(ROCConst_920::Equal, VexCommon_920::VexMV::Missing());
    } else if (constant_) {
        add(ROCConst_920::GreaterOrEqual, values_[0]);
    } else if (values_.size() == 1) {
        add(ROCConst_920::Less, values_[0]);
        add(ROCConst_920::GreaterOrEqual, values_[0]);
    } else {
        add(ROCConst_920::Equal, values_[0]);
        add(ROCConst_920::Equal, values_[1]);
    }
    return spaces;
}

int GroupSplit::spaceOf(double groupValue) const noexcept
{
    if (values_.size() == 1)
        return !constant_ && groupValue >= values_[0] ? 1 : 0; // NaN is not at or above anything
    if (groupValue == values_[0])
        return 0;
    return groupValue == values_[1] ? 1 : -1;
}

} // namespace ROCALG_920
