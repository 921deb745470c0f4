#pragma once

#include "host/VexValueLabels.h"

#include <string>

namespace VexXML_920 {

/// Description of a variable.
class [[gnu::visibility("default")]] IVexVariable
{
public:
    /// Answers of GetVarType.
    static constexpr int continuous = 1; ///< the object is a VexContVar
    static constexpr int categorical = 2;
    /// Answers of GetValueType; from twoValued on, values may have labels.
    static constexpr int plainValues = 1;
    static constexpr int twoValued = 2; ///< the values are 0 and 1
    static constexpr int labelledValues = 3;

    virtual ~IVexVariable();

    [[nodiscard]] virtual int GetVarType() const = 0;
    [[nodiscard]] virtual std::string GetName() const = 0;
    [[nodiscard]] virtual int GetValueType() const = 0;
    /// The labels of the values, or null without labels. Owned by the variable.
    [[nodiscard]] virtual const VexValueLabels* GetValueLabels() const = 0;
};

} // namespace VexXML_920
