#pragma once

#include "driver/GroupSplit.h"
#include "space/ROCSpace.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ROCALG_920 {

/// The spaces of all test variables of a run: one per variable and group. A variable that is listed more than once
/// has one set of spaces.
class TestSpaces {
public:
    /// testVars: usable variable indices in the order of the settings; empty: a space to make the others like.
    TestSpaces(const std::vector<int>& testVars, const ROCSpace& empty, const GroupSplit& split)
    {
        for (const int testVar : testVars)
            slots_.push_back(slotOf(testVar, empty, split));
    }

    /// Number of entries of the test-variable list, repeats included.
    [[nodiscard]] std::size_t entries() const noexcept { return slots_.size(); }
    /// The spaces behind an entry, in the order of the groups.
    [[nodiscard]] std::vector<ROCSpace>& ofEntry(std::size_t entry) noexcept
    {
        return variables_[slots_[entry]].spaces;
    }

    /// Gives the memory of an entry's spaces back, unless a later entry repeats the variable.
    void doneWith(std::size_t entry)
    {
        const auto later = slots_.begin() + static_cast<std::ptrdiff_t>(entry) + 1;
        if (std::find(later, slots_.end(), slots_[entry]) == slots_.end())
            std::vector<ROCSpace>().swap(ofEntry(entry));
    }

    /// The distinct variables, each fed once per record.
    struct Variable {
        int index; ///< position in a record
        std::vector<ROCSpace> spaces;
    };
    [[nodiscard]] std::vector<Variable>& variables() noexcept { return variables_; }

private:
    std::size_t slotOf(int testVar, const ROCSpace& empty, const GroupSplit& split)
    {
        for (std::size_t slot = 0; slot < variables_.size(); ++slot)
            if (variables_[slot].index == testVar)
                return slot;
        ROCSpace space = empty;
        space.setTestVarInd(testVar);
        variables_.push_back({testVar, split.spacesLike(space)});
        return variables_.size() - 1;
    }

    std::vector<Variable> variables_;
    std::vector<std::size_t> slots_; ///< per entry, where in variables_
};

} // namespace ROCALG_920
