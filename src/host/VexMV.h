#pragma once

#include <bit>
#include <cstdint>

namespace VexCommon_920 {

/// The missing value for doubles: a quiet NaN with the payload 1954, which R reads as its own NA.
///
/// It compares unequal to everything, itself included, so it is only ever tested by IsMissing; any other NaN is
/// "not a number" and not missing. Arithmetic may lose its sign or payload: test before computing.
class [[gnu::visibility("default")]] VexMV
{
public:
    [[nodiscard]] static constexpr double Missing() noexcept { return std::bit_cast<double>(bits); }
    [[nodiscard]] static constexpr bool IsMissing(double value) noexcept
    {
        return std::bit_cast<std::uint64_t>(value) == bits;
    }

private:
    static constexpr std::uint64_t bits = 0x7FF8'0000'0000'07A2;
};

} // namespace VexCommon_920
