#pragma once

#include <array>
#include <cstdint>

namespace ROCALG_920 {

/// Random numbers that are a function of where they stand: four words for a key and a counter, ten rounds. Salmon,
/// Moraes, Dror and Shaw 2011, Parallel random numbers: as easy as 1, 2, 3, SC11 (Philox4x32-10).
class Philox {
public:
    using Words = std::array<std::uint32_t, 4>;

    explicit constexpr Philox(std::uint64_t seed) noexcept
        : key_{static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32)}
    {
    }

    [[nodiscard]] constexpr Words operator()(Words counter) const noexcept
    {
        constexpr int rounds = 10;
        constexpr std::uint32_t weyl0 = 0x9E3779B9u;
        constexpr std::uint32_t weyl1 = 0xBB67AE85u;
        std::uint32_t key0 = key_[0];
        std::uint32_t key1 = key_[1];
        for (int round = 0; round < rounds; ++round) {
            const std::uint64_t first = std::uint64_t{0xD2511F53u} * counter[0];
            const std::uint64_t second = std::uint64_t{0xCD9E8D57u} * counter[2];
            counter = {static_cast<std::uint32_t>(second >> 32) ^ counter[1] ^ key0, static_cast<std::uint32_t>(second),
                       static_cast<std::uint32_t>(first >> 32) ^ counter[3] ^ key1, static_cast<std::uint32_t>(first)};
            key0 += weyl0;
            key1 += weyl1;
        }
        return counter;
    }

private:
    std::array<std::uint32_t, 2> key_;
};

} // namespace ROCALG_920
