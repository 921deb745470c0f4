#pragma once

#include <cstdint>

namespace ROCALG_920 {

/// How one cut-off classifies the cases of a sample. Every case counts 1, whatever its weight.
struct CutOffCounts {
    std::int64_t truePositives = 0;
    std::int64_t falsePositives = 0;
    std::int64_t trueNegatives = 0;
    std::int64_t falseNegatives = 0;

    [[nodiscard]] std::int64_t positives() const noexcept { return truePositives + falseNegatives; }
    [[nodiscard]] std::int64_t negatives() const noexcept { return falsePositives + trueNegatives; }
    [[nodiscard]] std::int64_t classifiedPositive() const noexcept { return truePositives + falsePositives; }
    [[nodiscard]] bool operator==(const CutOffCounts&) const noexcept = default;
};

} // namespace ROCALG_920
