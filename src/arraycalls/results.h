#pragma once

#include "host/VexMV.h"
#include "vexrocproc/arraycalls.h"

/// The records of the array calls, as they are filled and compared.
namespace ROCALG_920::arraycalls {

/// A record without statistics: no counts, every value missing.
[[nodiscard]] inline auc_res missingArea() noexcept
{
    constexpr double missing = VexCommon_920::VexMV::Missing();
    return {0.0, 0.0, missing, missing, missing, missing, missing};
}

[[nodiscard]] inline auc_comparison_res missingComparison() noexcept
{
    constexpr double missing = VexCommon_920::VexMV::Missing();
    return {missingArea(), missingArea(), missing, missing, missing, missing, missing, missing};
}

} // namespace ROCALG_920::arraycalls
