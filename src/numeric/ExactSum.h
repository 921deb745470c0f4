#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ROCALG_920 {

/// A sum of doubles without rounding: the order in which they come changes no bit. Rounded once, when it is read.
///
/// Radford M. Neal 2015, Fast exact summation using small and large superaccumulators, arXiv 1505.05571: chunks of 32
/// bits over the whole range of exponents, each with room for the carries of 2^30 terms.
class ExactSum {
public:
    /// A finite number.
    void add(double term) noexcept;
    /// The double nearest to the sum, the even one of two.
    [[nodiscard]] double value() const noexcept;

private:
    static constexpr std::size_t chunkCount = 68; ///< 2098 bits of doubles, and carries of 2^64 of them
    static constexpr int chunkBits = 32;
    using Chunks = std::array<std::int64_t, chunkCount>;
    static void carry(Chunks& chunks) noexcept;

    Chunks chunks_{}; ///< chunk i counts 2^(32 i - 1074)
    std::int32_t termsSinceCarry_ = 0;
};

} // namespace ROCALG_920
