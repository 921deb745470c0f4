#pragma once

#include "host/IVexVariable.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace VexXML_920 {

/// The variables of a data set, in the order of the values in its records.
///
/// Life: filled by the host before an analysis and kept alive through it. Movable, not copyable: it owns the
/// descriptions, whose addresses stay valid while the list grows or moves.
/// Failure: an index outside [0, GetCount()) throws std::out_of_range.
class [[gnu::visibility("default")]] VexVarList
{
public:
    VexVarList() = default;
    VexVarList(const VexVarList&) = delete;
    VexVarList& operator=(const VexVarList&) = delete;
    VexVarList(VexVarList &&) noexcept = default;
    VexVarList& operator=(VexVarList&&) noexcept = default;
    ~VexVarList() = default;

    // Each of these appends a variable and returns its index.

    /// A continuous variable of unknown range: an analysis that needs the range reads the data for it.
    int AddContinuous(std::string name);
    /// A continuous variable with values in [min, max]; throws std::invalid_argument unless min <= max.
    int AddContinuous(std::string name, double min, double max);
    /// A variable with the values 0 and 1, and labels for them if there are any.
    int AddTwoValued(std::string name, std::map<int, std::string> labels = {});
    /// A variable with whole-number values and their labels.
    int AddCategorical(std::string name, std::map<int, std::string> labels);
    /// A description of the host's own; null throws std::invalid_argument.
    int Add(std::unique_ptr<IVexVariable> variable);

    [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(variables_.size()); }
    /// The variable at that position. Owned by the list.
    [[nodiscard]] IVexVariable* GetVarAt(int index) const;

private:
    std::vector<std::unique_ptr<IVexVariable>> variables_;
};

} // namespace VexXML_920
