#pragma once

#include "host/IVexVariable.h"

#include <limits>
#include <string>

namespace VexXML_920 {

/// A continuous variable and, where it is known, the range of its values.
/// Failure: a minimum above the maximum, or NaN as either, throws std::invalid_argument.
class [[gnu::visibility("default")]] VexContVar : public IVexVariable
{
public:
    static constexpr double unknownMin = std::numeric_limits<double>::lowest();
    static constexpr double unknownMax = std::numeric_limits<double>::max();

    explicit VexContVar(std::string name, double min = unknownMin, double max = unknownMax);

    [[nodiscard]] int GetVarType() const override;
    [[nodiscard]] std::string GetName() const override;
    [[nodiscard]] int GetValueType() const override;
    /// Always null.
    [[nodiscard]] const VexValueLabels* GetValueLabels() const override;

    /// Smallest value; unknownMin when the range is not known.
    [[nodiscard]] double GetMin() const noexcept { return min_; }
    /// Largest value; unknownMax when the range is not known.
    [[nodiscard]] double GetMax() const noexcept { return max_; }

private:
    std::string name_;
    double min_;
    double max_;
};

} // namespace VexXML_920
