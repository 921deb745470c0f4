#pragma once

#include <cstdint>
#include <string>

namespace vexroc {

/// What it takes to say a cut-off of a test in words.
struct CutOffReading {
    enum class Calls : std::uint8_t {
        some,
        all, ///< every case is called positive, whatever its value
        none
    };
    Calls positive = Calls::some;
    bool largerIsPositive = true;
    bool equalIsPositive = true;
    bool wholeNumbers = false; ///< the test has no other values
};

/// "15.045"; "3.5 (at least 4)" where only whole numbers occur; "any" and "none" for the ends of a curve; empty for
/// NaN, where there is no cut-off.
std::string cutOffText(double cutOff, const CutOffReading& reading);

} // namespace vexroc
