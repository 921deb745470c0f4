#include "numeric/ExactSum.h"

#include <bit>
#include <cmath>

namespace ROCALG_920 {

namespace {

constexpr std::uint64_t chunkMask = 0xFFFF'FFFF;
constexpr int lowestExponent = -1074; // of the last bit of a denormal

} // namespace

void ExactSum::add(double term) noexcept
{
    __extension__ typedef unsigned __int128 Wide;
    constexpr int fractionBits = 52;
    constexpr std::int32_t termsBetweenCarries = 1 << 30;
    const auto bits = std::bit_cast<std::uint64_t>(term);
    const std::uint64_t exponent = bits >> fractionBits & 0x7FF;
    const std::uint64_t fraction = bits & ((std::uint64_t{1} << fractionBits) - 1);
    const std::uint64_t place = exponent == 0 ? 0 : exponent - 1;
    const Wide shifted = Wide{exponent == 0 ? fraction : fraction | std::uint64_t{1} << fractionBits}
        << place % chunkBits;
    const std::int64_t sign = std::signbit(term) ? -1 : 1;
    for (std::size_t i = 0; i < 3; ++i)
        chunks_[place / chunkBits + i] +=
            sign * static_cast<std::int64_t>(static_cast<std::uint64_t>(shifted >> (i * chunkBits)) & chunkMask);
    if (++termsSinceCarry_ == termsBetweenCarries) {
        carry(chunks_);
        termsSinceCarry_ = 0;
    }
}

/// All but the highest chunk into [0, 2^32).
void ExactSum::carry(Chunks& chunks) noexcept
{
    for (std::size_t i = 0; i + 1 < chunkCount; ++i) {
        chunks[i + 1] += chunks[i] >> chunkBits; // down, also below 0
        chunks[i] &= static_cast<std::int64_t>(chunkMask);
    }
}

/// The highest 64 bits decide the double, and whether anything is below them.
double ExactSum::value() const noexcept
{
    Chunks chunks = chunks_;
    carry(chunks);
    const bool negative = chunks[chunkCount - 1] < 0;
    if (negative) {
        for (std::int64_t& chunk : chunks)
            chunk = -chunk;
        carry(chunks);
    }
    std::size_t top = chunkCount - 1;
    while (top > 1 && chunks[top] == 0)
        --top;
    const auto word = [&](std::size_t i) { return static_cast<std::uint64_t>(chunks[i]); };
    std::uint64_t leading = word(top) << chunkBits | word(top - 1);
    const int shift = leading == 0 ? 0 : std::countl_zero(leading);
    bool below = false;
    if (top > 1 && shift > 0) { // at most 31 bits: the highest chunk is not 0
        leading = leading << shift | word(top - 2) >> (chunkBits - shift);
        below = (word(top - 2) << shift & chunkMask) != 0;
    } else if (top > 1) {
        below = word(top - 2) != 0;
    } else {
        leading <<= shift;
    }
    for (std::size_t i = 0; i + 2 < top; ++i)
        below = below || chunks[i] != 0;
    const int exponent = lowestExponent + static_cast<int>(top - 1) * chunkBits - shift;
    const double magnitude = std::ldexp(static_cast<double>(leading | std::uint64_t{below}), exponent);
    return negative ? -magnitude : magnitude;
}

} // namespace ROCALG_920
