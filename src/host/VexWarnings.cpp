#include "host/VexWarnings.h"

#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

namespace VexCommon_920 {

VexWarnings::~VexWarnings() = default;

void VexWarnings::AddWarning(const VexStatus& status, Destination /*destination*/)
{
    warnings_.push_back({.status = status, .parameters = {}});
}

void VexWarnings::AddParameter(const VexStatus& status, int value)
{
    const VexParameterValue parameter{value};
    if (const std::optional<int> i = Find(status))
        warnings_[static_cast<std::size_t>(*i)].parameters.push_back(parameter);
    else
        warnings_.push_back({.status = status, .parameters = {parameter}});
}

void VexWarnings::AddWarnings(VexWarnings other)
{
    warnings_.insert(warnings_.end(), std::make_move_iterator(other.warnings_.begin()),
                     std::make_move_iterator(other.warnings_.end()));
}

const VexStatus& VexWarnings::GetStatus(int i) const { return at(i).status; }

const std::vector<VexWarnings::VexParameterValue>& VexWarnings::GetParameters(int i) const { return at(i).parameters; }

std::optional<int> VexWarnings::Find(const VexStatus& status) const noexcept
{
    for (int i = GetCount() - 1; i >= 0; --i) {
        if (warnings_[static_cast<std::size_t>(i)].status.GetErrorCode() == status.GetErrorCode())
            return i;
    }
    return std::nullopt;
}

const VexWarnings::Warning& VexWarnings::at(int i) const
{
    if (i < 0 || i >= GetCount())
        throw std::out_of_range("VexWarnings: index " + std::to_string(i) + " is outside a collection of "
                                + std::to_string(GetCount()) + " warnings");
    return warnings_[static_cast<std::size_t>(i)];
}

} // namespace VexCommon_920
