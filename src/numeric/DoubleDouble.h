#pragma once

#include <cmath>

namespace ROCALG_920 {

/// A number held as the unevaluated sum of two doubles, about 32 digits. Made of the basic operations alone, which
/// every processor rounds alike, so that results are the same to the bit everywhere: no function of the C library, no
/// fused multiply-add. Range and infinities are those of double.
///
/// After T. J. Dekker, A floating-point technique for extending the available precision, Numer. Math. 18 (1971); D. E.
/// Knuth, The Art of Computer Programming 2, section 4.2.2.
class DoubleDouble {
public:
    constexpr DoubleDouble() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): every double is one of these
    constexpr DoubleDouble(double value) noexcept : high_(value) {}
    /// The sum, exactly where it fits.
    static constexpr DoubleDouble sum(double a, double b) noexcept
    {
        const double s = a + b;
        const double ofB = s - a;
        return {s, (a - (s - ofB)) + (b - ofB)};
    }
    /// The product, exactly where it fits and nothing underflows.
    static constexpr DoubleDouble product(double a, double b) noexcept
    {
        const double p = a * b;
        const auto [ah, al] = halves(a);
        const auto [bh, bl] = halves(b);
        return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
    }

    [[nodiscard]] constexpr double high() const noexcept { return high_; }
    [[nodiscard]] constexpr double low() const noexcept { return low_; }
    /// The nearest double.
    [[nodiscard]] explicit constexpr operator double() const noexcept { return high_ + low_; }

    friend constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) noexcept
    {
        const DoubleDouble high = sum(a.high_, b.high_);
        const DoubleDouble low = sum(a.low_, b.low_);
        const DoubleDouble middle = ordered(high.high_, high.low_ + low.high_);
        return ordered(middle.high_, middle.low_ + low.low_);
    }
    friend constexpr DoubleDouble operator-(DoubleDouble a) noexcept { return {-a.high_, -a.low_}; }
    friend constexpr DoubleDouble operator-(DoubleDouble a, DoubleDouble b) noexcept { return a + -b; }
    friend constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) noexcept
    {
        const DoubleDouble p = product(a.high_, b.high_);
        return ordered(p.high_, p.low_ + (a.high_ * b.low_ + a.low_ * b.high_));
    }
    friend constexpr DoubleDouble operator/(DoubleDouble a, DoubleDouble b) noexcept
    {
        const double first = a.high_ / b.high_;
        const DoubleDouble rest = a - b * first;
        const double second = rest.high_ / b.high_;
        const DoubleDouble last = rest - b * second;
        return ordered(first, second) + last.high_ / b.high_;
    }
    friend constexpr bool operator<(DoubleDouble a, DoubleDouble b) noexcept
    {
        return a.high_ < b.high_ || (a.high_ == b.high_ && a.low_ < b.low_); // exact
    }

    /// Times a power of two, exactly where nothing underflows.
    [[nodiscard]] DoubleDouble scaled(int exponent) const noexcept
    {
        return {std::ldexp(high_, exponent), std::ldexp(low_, exponent)};
    }

    constexpr DoubleDouble(double high, double low) noexcept : high_(high), low_(low) {}

private:
    struct Halves {
        double high, low;
    };
    /// Two parts of 26 bits each, whose products are exact. Beyond 2^996 the split itself would overflow.
    static constexpr Halves halves(double a) noexcept
    {
        constexpr double splitter = 134217729.0; // 2^27 + 1
        constexpr double largest = 0x1p996;
        if (a - a != 0.0)
            return {a, 0.0}; // infinite, or not a number
        if (a > largest || a < -largest) {
            const auto [high, low] = halves(a * 0x1p-28);
            return {high * 0x1p28, low * 0x1p28};
        }
        const double t = splitter * a;
        const double high = t - (t - a);
        return {high, a - high};
    }
    /// The sum of two numbers of which the first is not the smaller one.
    static constexpr DoubleDouble ordered(double a, double b) noexcept
    {
        const double s = a + b;
        return {s, b - (s - a)};
    }

    double high_ = 0.0;
    double low_ = 0.0;
};

} // namespace ROCALG_920
