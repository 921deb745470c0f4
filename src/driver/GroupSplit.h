#pragma once

#include "space/ROCSpace.h"
#include "vexrocproc/ROCConst.h"

#include <utility>
#include <vector>

namespace ROCALG_920 {

/// How a group variable splits the cases of every test variable into spaces.
///
/// One value splits at it: cases below it and cases at or above it, or, when the variable is constant, one group of
/// all. Two values make two groups of cases equal to them; other cases are in neither.
class GroupSplit {
public:
    /// All cases in one group, without a group variable.
    GroupSplit() = default;
    /// groupVar >= 0; at least one value.
    GroupSplit(int groupVar, std::vector<double> values, bool constant)
        : groupVar_(groupVar), values_(std::move(values)), constant_(constant)
    {
    }

    [[nodiscard]] int groupVar() const noexcept { return groupVar_; }
    /// Copies of an empty space, one per group, that carry the group they stand for.
    [[nodiscard]] std::vector<ROCSpace> spacesLike(const ROCSpace& empty) const;
    /// Index of the space for a case with this value of the group variable, which there is; -1 for none.
    [[nodiscard]] int spaceOf(double groupValue) const noexcept;

private:
    int groupVar_ = -1;
    std::vector<double> values_;
    bool constant_ = false;
};

} // namespace ROCALG_920
