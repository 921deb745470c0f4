#pragma once

#include "summary/WeightedSummary.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace ROCALG_920::calls {

/// Cases that come in pieces and are read as one sample.
///
/// Pieces without weights are kept as summaries, each at most half as long as the one before, so that n of them cost no
/// more than n log n; cases with probability weights are kept as they are, 24 bytes each, since their sums have to be
/// exact.
class CollectedCases {
public:
    static constexpr std::int64_t mostCases = std::int64_t{1} << 40;

    CollectedCases() = default;
    explicit CollectedCases(Summary sample) { add(std::move(sample)); }

    // On failure nothing was added. Throw std::bad_alloc, and InvalidArgument for kinds that do not go together and
    // beyond mostCases.
    void add(Summary piece);
    void add(const std::vector<WeightedCase>& piece);
    void countLeftOut(std::int64_t rows) noexcept { leftOut_ += rows; }

    /// All cases as one sample. Any number of threads may ask at once. Throws std::bad_alloc.
    [[nodiscard]] const WeightedSummary& sample() const;
    [[nodiscard]] std::int64_t leftOut() const noexcept { return leftOut_; }

private:
    void requireRoom(std::int64_t cases) const;

    std::int64_t cases_ = 0;
    std::int64_t leftOut_ = 0;
    mutable std::mutex settling_;
    mutable bool settled_ = true;                ///< all cases are in the sample
    mutable std::vector<Summary> pieces_;        ///< not settled, without weights: all cases
    mutable std::vector<WeightedCase> weighted_; ///< all cases, if they have weights
    mutable WeightedSummary sample_;
};

/// A sample whose larger values are the more positive ones: the given one, which outlives this, or its mirror image.
/// Areas and replicates are made of it; cut-offs are not, since the ends of a curve are not each other's mirror images:
/// sweep the sample as it stands with InferenceOptions::curve.
class Directed {
public:
    Directed(const WeightedSummary& sample, bool largerIsPositive) : given_(sample)
    {
        if (!largerIsPositive)
            mirror_ = sample.negated();
    }
    [[nodiscard]] const WeightedSummary& sample() const noexcept { return mirror_ ? *mirror_ : given_; }
    [[nodiscard]] const Summary& counts() const noexcept { return sample().counts; }

private:
    const WeightedSummary& given_;
    std::optional<WeightedSummary> mirror_;
};

} // namespace ROCALG_920::calls

/// What the opaque handle of summary.h points at.
struct vexroc_summary {
    ROCALG_920::calls::CollectedCases cases;

    [[nodiscard]] const ROCALG_920::WeightedSummary& sample() const { return cases.sample(); }
};
