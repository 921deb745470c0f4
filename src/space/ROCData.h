#pragma once

namespace ROCALG_920 {

/// One observation of a test variable.
struct ROCData {
    bool positive = false; ///< the case is in the positive state
    double value = 0.0;    ///< test value, in the unit of the test variable

    [[nodiscard]] bool operator==(const ROCData&) const noexcept = default;
};

/// Ascending order of test values.
[[nodiscard]] inline bool sortMethod(const ROCData& a, const ROCData& b) noexcept { return a.value < b.value; }

} // namespace ROCALG_920
