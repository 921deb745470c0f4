#pragma once

#include "host/VexStatus.h"

#include <optional>
#include <vector>

namespace VexCommon_920 {

/// Warnings in the order in which they were added, each with its parameters.
///
/// Life: a value type; a copy holds copies of everything.
/// Failure: an index outside [0, GetCount()) throws std::out_of_range. An operation that runs out of memory leaves
/// the collection as it was.
class [[gnu::visibility("default")]] VexWarnings
{
public:
    /// Where a warning goes. There is one destination, the collection itself.
    enum Destination { Collection = 0 };

    /// Parameter of a warning: an integer, for example the index of a variable.
    class VexParameterValue {
    public:
        constexpr explicit VexParameterValue(int value) noexcept : value_(value) {}
        [[nodiscard]] constexpr int GetInt() const noexcept { return value_; }
        friend constexpr bool operator==(const VexParameterValue&, const VexParameterValue&) noexcept = default;

    private:
        int value_;
    };

    VexWarnings() = default;
    VexWarnings(const VexWarnings&) = default;
    VexWarnings(VexWarnings &&) noexcept = default;
    VexWarnings& operator=(const VexWarnings&) = default;
    VexWarnings& operator=(VexWarnings&&) noexcept = default;
    virtual ~VexWarnings();

    /// Appends a warning, also when one with the same code is there already.
    void AddWarning(const VexStatus& status, Destination destination);
    /// Appends a parameter to the last warning with the status's code; adds that warning first if there is none.
    void AddParameter(const VexStatus& status, int value);
    /// Appends all warnings of another collection with their parameters. A collection can be appended to itself.
    void AddWarnings(VexWarnings other);

    [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(warnings_.size()); }
    [[nodiscard]] const VexStatus& GetStatus(int i) const;
    /// Parameters of warning i, in the order in which they were added.
    [[nodiscard]] const std::vector<VexParameterValue>& GetParameters(int i) const;
    /// Index of the last warning with the status's code; nothing when there is none.
    [[nodiscard]] std::optional<int> Find(const VexStatus& status) const noexcept;

private:
    struct Warning {
        VexStatus status;
        std::vector<VexParameterValue> parameters;
    };
    [[nodiscard]] const Warning& at(int i) const;

    std::vector<Warning> warnings_;
};

} // namespace VexCommon_920
