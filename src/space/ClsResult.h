#pragma once

namespace ROCALG_920 {

/// Classification counts at one cut-off. Every observation counts 1, whatever its weight.
struct ClsResult {
    double falseNegative = 0.0; ///< positive observations on the negative side of the cut-off
    double trueNegative = 0.0;  ///< negative observations on the negative side of the cut-off

    [[nodiscard]] bool operator==(const ClsResult&) const noexcept = default;
};

} // namespace ROCALG_920
