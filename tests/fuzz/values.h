#pragma once

#include "tests/fuzz/FuzzInput.h"

#include <cmath>
#include <limits>

namespace roctest {

/// Mostly one of a few values at the edges, so that ties are common, else any double.
inline double hardValue(FuzzInput& input)
{
    using Limits = std::numeric_limits<double>;
    // clang-format off
    static const double edges[] = {
        0.0, -0.0, 1.0, -1.0, 0.5, 0.25, std::nextafter(0.5, 1.0), std::nextafter(1.0, 0.0), 2.0, 3.0, 4.0, 5.0,
        Limits::denorm_min(), -Limits::denorm_min(), Limits::min(), 1e300, -1e300, Limits::max(), Limits::lowest(),
        Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), std::nextafter(1e300, 0.0), 1e-300};
    // clang-format on
    const std::uint8_t choice = input.byte();
    return choice < 16 ? input.take<double>() : edges[choice % std::size(edges)];
}

} // namespace roctest
