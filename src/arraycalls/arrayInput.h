#pragma once

#include "numeric/DefaultArithmetic.h"
#include "summary/Observations.h"

#include <limits>

/// What the array calls share: their arguments as the statistics take them.
namespace ROCALG_920::arraycalls {

/// Null stands for 1.
[[nodiscard]] inline double positiveState(const double* positiveValue) noexcept
{
    return positiveValue != nullptr ? *positiveValue : 1.0;
}

/// States and test values of n cases, as a call received them. Null arrays, or n <= 0, are no cases.
struct ArrayInput {
    const double* actual;
    const double* predicted;
    int n;
    const double* positiveValue;

    [[nodiscard]] std::size_t size() const noexcept
    {
        return actual == nullptr || predicted == nullptr || n <= 0 ? 0 : static_cast<std::size_t>(n);
    }
};

/// The cases in order. Those whose test value is NaN are left out; when there are none, the arrays are read in place.
[[nodiscard]] Observations observationsOf(const ArrayInput& input);

/// The level itself inside (0, 1); elsewhere NaN, for which there is no critical value and so no interval.
[[nodiscard]] inline double usableLevel(double confidenceLevel) noexcept
{
    return confidenceLevel > 0.0 && confidenceLevel < 1.0 ? confidenceLevel : std::numeric_limits<double>::quiet_NaN();
}

/// Runs a call's work in default arithmetic; no exception leaves it, the failed result takes the place of one.
template <class Work, class Result>
Result guarded(Work&& work, const Result& failed) noexcept
{
    const DefaultArithmetic arithmetic;
    try {
        return work();
    } catch (...) {
        return failed;
    }
}

} // namespace ROCALG_920::arraycalls
