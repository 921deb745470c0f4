#pragma once

#include <cfenv>

namespace ROCALG_920 {

/// While it lives, this thread computes as C++ starts out: rounding to nearest, denormals kept, no traps. The host's
/// own floating-point environment, status flags included, is back afterwards.
///
/// Hosts turn on flush-to-zero for speed, and whole programs get it from one library that was linked with -ffast-math;
/// the midpoint of two denormals would then be 0 and the cases on either side of it miscounted.
class DefaultArithmetic {
public:
    DefaultArithmetic() noexcept
    {
        std::fegetenv(&host_);
        std::fesetenv(FE_DFL_ENV);
    }
    ~DefaultArithmetic() { std::fesetenv(&host_); }
    DefaultArithmetic(const DefaultArithmetic&) = delete;
    DefaultArithmetic& operator=(const DefaultArithmetic&) = delete;

private:
    std::fenv_t host_;
};

} // namespace ROCALG_920
