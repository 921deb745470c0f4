#pragma once

#include "driver/GroupSplit.h"
#include "space/ROCSpace.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace ROCALG_920 {

/// The spaces of all test variables of a run: one per variable and group. A variable that is listed more than once
/// has one set of spaces.
class TestSpaces {
public:
    /// testVars: usable variable indices in the order of the settings; empty: a space to make the others like.
    TestSpaces(const std::vector<int>& testVars, const ROCSpace& empty, const GroupSplit& split)
    {
        std::unordered_map<int, std::size_t> slotOf; // there may be tens of thousands of variables
        for (const int testVar : testVars) {
            const auto [known, isNew] = slotOf.try_emplace(testVar, variables_.size());
            if (isNew)
                addVariable(testVar, empty, split);
            slots_.push_back(known->second);
            ++variables_[known->second].entriesLeft;
        }
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
        if (--variables_[slots_[entry]].entriesLeft == 0)
            std::vector<ROCSpace>().swap(ofEntry(entry));
    }

    /// The distinct variables, each fed once per record.
    struct Variable {
        int index; ///< position in a record
        std::vector<ROCSpace> spaces;
        std::size_t entriesLeft = 0; ///< entries that still need the spaces
    };
    [[nodiscard]] std::vector<Variable>& variables() noexcept { return variables_; }

private:
    void addVariable(int testVar, const ROCSpace& empty, const GroupSplit& split)
    {
        ROCSpace space = empty;
        space.setTestVarInd(testVar);
        variables_.push_back({testVar, split.spacesLike(space)});
    }

    std::vector<Variable> variables_;
    std::vector<std::size_t> slots_; ///< per entry, where in variables_
};

} // namespace ROCALG_920
