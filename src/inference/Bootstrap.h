#pragma once

#include "inference/Proportion.h"
#include "numeric/Philox.h"
#include "summary/Summary.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

/// The stratified bootstrap of one area: as many positive and negative cases as there are, drawn with replacement.
/// Efron 1987, J. Am. Statist. Assoc. 82, 171-185; Davison and Hinkley 1997, Bootstrap methods and their application.
namespace ROCALG_920 {

/// Draws replicates. Replicate b depends on the sample, the seed and b alone: not on the order of the cases, nor on
/// which replicates are drawn where. Memory: 4 bytes a case, 8 a distinct value.
class AreaBootstrap {
public:
    /// Of a sample with both states, whose 2 P N is below 2^63 and which has fewer than 2^32 cases of a state. Throws
    /// std::bad_alloc only.
    AreaBootstrap(const Summary& sample, std::uint64_t seed);

    /// 2 U, which is 2 P N times the area, of the replicates from `first` on. False when goOn, asked after every 1024
    /// of them, answers false.
    [[nodiscard]] bool draw(std::uint64_t first, std::span<std::int64_t> twiceU,
                            const std::function<bool()>& goOn = {});

private:
    enum class State : std::uint32_t { positive = 0, negative = 1 };
    void drawState(std::uint64_t replicate, State state);

    Philox random_;
    std::vector<std::uint32_t> valueOfPositive_; ///< place of its distinct value, for every case in ascending order
    std::vector<std::uint32_t> valueOfNegative_;
    struct Drawn {
        std::uint32_t positives;
        std::uint32_t negatives;
    };
    std::vector<Drawn> drawn_; ///< of every distinct value
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
