#pragma once

#include <string>

namespace VexXML_920 {

/// The value-label table of a variable.
class [[gnu::visibility("default")]] VexValueLabels
{
public:
    virtual ~VexValueLabels();

    /// Label of a value. For a value without a label the tables of VexVarList give its digits.
    [[nodiscard]] virtual std::string GetLabel(int value) const = 0;
};

} // namespace VexXML_920
