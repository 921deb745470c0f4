#pragma once

#include "numeric/Int128.h"

#include <array>
#include <bit>
#include <cmath>
#include <compare>
#include <cstddef>
#include <cstdint>

namespace ROCALG_920 {

/// A signed integer of 256 bits, for the differences of products of sums: with P + N = 2^40 cases 12 P^2 N^2 stays
/// below 2^160. Arithmetic is exact while results fit, and modulo 2^256 beyond.
class Int256 {
public:
    constexpr Int256() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): any smaller integer is one of these
    constexpr Int256(Int128 value) noexcept
        : words_{static_cast<Word>(value), static_cast<Word>(value >> wordBits), static_cast<Word>(value < 0 ? -1 : 0),
                 static_cast<Word>(value < 0 ? -1 : 0)}
    {
    }

    friend constexpr Int256 operator+(const Int256& a, const Int256& b) noexcept
    {
        Int256 sum;
        Double carry = 0;
        for (std::size_t i = 0; i < words; ++i) {
            carry += Double{a.words_[i]} + b.words_[i];
            sum.words_[i] = static_cast<Word>(carry);
            carry >>= wordBits;
        }
        return sum;
    }
    friend constexpr Int256 operator-(const Int256& a) noexcept
    {
        Int256 complement;
        for (std::size_t i = 0; i < words; ++i)
            complement.words_[i] = ~a.words_[i];
        return complement + Int256(1);
    }
    friend constexpr Int256 operator-(const Int256& a, const Int256& b) noexcept { return a + -b; }
    friend constexpr Int256 operator*(const Int256& a, const Int256& b) noexcept
    {
        Int256 product; // what two's complements add above the highest word falls away
        for (std::size_t i = 0; i < words; ++i) {
            Double carry = 0;
            for (std::size_t j = 0; i + j < words; ++j) {
                carry += Double{a.words_[i]} * b.words_[j] + product.words_[i + j];
                product.words_[i + j] = static_cast<Word>(carry);
                carry >>= wordBits;
            }
        }
        return product;
    }
    friend constexpr bool operator==(const Int256&, const Int256&) noexcept = default;
    friend constexpr std::strong_ordering operator<=>(const Int256& a, const Int256& b) noexcept
    {
        if (a.isNegative() != b.isNegative())
            return a.isNegative() ? std::strong_ordering::less : std::strong_ordering::greater;
        for (std::size_t i = words - 1; i > 0; --i)
            if (a.words_[i] != b.words_[i])
                return a.words_[i] <=> b.words_[i];
        return a.words_[0] <=> b.words_[0];
    }

    /// The nearest double, the even one of two: one rounding, as from the built-in integers.
    [[nodiscard]] explicit operator double() const noexcept
    {
        return isNegative() ? -(-*this).magnitude() : magnitude();
    }

private:
    using Word = std::uint64_t;
    __extension__ typedef unsigned __int128 Double;
    static constexpr std::size_t words = 4;
    static constexpr int wordBits = 64;

    [[nodiscard]] constexpr bool isNegative() const noexcept { return words_[words - 1] >> (wordBits - 1) != 0; }
    /// Read as an unsigned integer. The highest 64 bits decide the double, and whether anything is below them.
    [[nodiscard]] double magnitude() const noexcept
    {
        std::size_t top = words - 1;
        while (top > 0 && words_[top] == 0)
            --top;
        if (top == 0)
            return static_cast<double>(words_[0]);
        const int shift = std::countl_zero(words_[top]);
        Word leading = words_[top] << shift;
        Word rest = words_[top - 1] << shift;
        if (shift > 0)
            leading |= words_[top - 1] >> (wordBits - shift);
        for (std::size_t i = 0; i + 1 < top; ++i)
            rest |= words_[i];
        return std::ldexp(static_cast<double>(leading | Word{rest != 0}), static_cast<int>(top) * wordBits - shift);
    }

    std::array<Word, words> words_{}; ///< two's complement, the lowest word first
};

} // namespace ROCALG_920
