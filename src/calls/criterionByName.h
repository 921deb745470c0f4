#pragma once

#include "inference/CutOffCriterion.h"

#include <string_view>

namespace ROCALG_920::calls {

/// A criterion as callers name it.
struct NamedCriterion {
    CutOffCriterion::Kind kind;
    std::string_view name; ///< without the share; a literal, ends with a 0
    double share;          ///< missing but for specificity and sensitivity

    [[nodiscard]] bool hasShare() const noexcept
    {
        return kind == CutOffCriterion::Kind::specificity || kind == CutOffCriterion::Kind::sensitivity;
    }
};

/// "youden", "specificity=0.9" and so on, whatever the case of the letters and the locale. Throws InvalidArgument with
/// the criteria that there are, or with what is wrong with the share.
[[nodiscard]] NamedCriterion criterionByName(const char* text);

} // namespace ROCALG_920::calls
