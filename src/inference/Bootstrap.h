#pragma once

#include "inference/Proportion.h"
#include "numeric/Philox.h"
#include "summary/Summary.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// The stratified bootstrap of one area: as many positive and negative cases as there are, drawn with replacement.
/// Efron 1987, J. Am. Statist. Assoc. 82, 171-185; Davison and Hinkley 1997, Bootstrap methods and their application.
namespace ROCALG_920 {

/// Draws samples anew. Sample b depends on the given one, the seed and b alone: not on the order of the cases, nor on
/// which samples are drawn where. Memory: 4 bytes a case; any number of threads may draw at once.
class Resampling {
public:
    /// How often the cases of a distinct value were drawn.
    struct Drawn {
        std::uint32_t positives;
        std::uint32_t negatives;
    };

    /// Of a sample with both states, fewer than 2^32 cases of either. Throws std::bad_alloc only.
    Resampling(const Summary& sample, std::uint64_t seed);

    /// @param drawn  of every distinct value, ascending
    void draw(std::uint64_t replicate, std::span<Drawn> drawn) const;

private:
    enum class State : std::uint32_t { positive = 0, negative = 1 };
    void drawState(std::uint64_t replicate, State state, std::span<Drawn> drawn) const;

    Philox random_;
    std::vector<std::uint32_t> valueOfPositive_; ///< place of its distinct value, for every case in ascending order
    std::vector<std::uint32_t> valueOfNegative_;
};

/// Draws replicates of 2 U, which is 2 P N times the area, of a sample whose 2 P N is below 2^63.
class AreaBootstrap {
public:
    /// Throws std::bad_alloc only.
    AreaBootstrap(const Summary& sample, std::uint64_t seed)
        : resampling_(sample, seed), values_(sample.values().size())
    {
    }

    /// The replicates from `first` on; 8 bytes a distinct value for the time.
    void draw(std::uint64_t first, std::span<std::int64_t> twiceU) const;

private:
    Resampling resampling_;
    std::size_t values_;
};

struct BootstrapInterval {
    double stdError;
    Limits limits;
    bool heldAtEnd = false;    ///< an order statistic beyond the replicates was asked for
    bool isPercentile = false; ///< bca asked for what these replicates do not define
};

/// Are there enough replicates for the limits of a level?
[[nodiscard]] bool enoughReplicates(std::size_t replicates, double level) noexcept;

/// Standard error and percentile limits of replicates of 2 U, which are sorted.
[[nodiscard]] BootstrapInterval percentileInterval(std::span<std::int64_t> twiceU, const StateCounts& cases,
                                                   double level);
/// The same with limits that are corrected for bias and acceleration.
[[nodiscard]] BootstrapInterval bcaInterval(std::span<std::int64_t> twiceU, const Summary& sample, double level);

} // namespace ROCALG_920
