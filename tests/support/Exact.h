#pragma once

#include "host/VexMV.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <vector>

namespace roctest {

/// A double that equals another one bit by bit; every NaN but the missing value counts as the same one.
struct Exact {
    double value = 0.0;

    [[nodiscard]] std::uint64_t key() const noexcept
    {
        constexpr double anyNaN = std::numeric_limits<double>::quiet_NaN();
        const bool ordinaryNaN = std::isnan(value) && !VexCommon_920::VexMV::IsMissing(value);
        return std::bit_cast<std::uint64_t>(ordinaryNaN ? anyNaN : value);
    }
    [[nodiscard]] bool operator==(const Exact& other) const noexcept { return key() == other.key(); }
    friend void PrintTo(const Exact& number, std::ostream* out)
    {
        out->precision(17);
        if (VexCommon_920::VexMV::IsMissing(number.value))
            *out << "missing";
        else
            *out << number.value;
    }
};

using Numbers = std::vector<Exact>;

/// Distance from the true value, in units in the last place of the true value; 0 has no neighbourhood.
[[nodiscard]] inline double ulpsApart(double got, long double truth)
{
    const double nearest = static_cast<double>(truth);
    if (nearest == 0.0 || !std::isfinite(nearest))
        return Exact{got} == Exact{nearest} ? 0.0 : std::numeric_limits<double>::infinity();
    const double unit = std::abs(nearest) - std::nextafter(std::abs(nearest), 0.0);
    return static_cast<double>(std::abs(got - truth)) / unit;
}

} // namespace roctest
