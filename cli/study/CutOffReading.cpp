#include "cli/study/CutOffReading.h"

#include "cli/words/Readable.h"

#include <cmath>

namespace vexroc {

namespace {

/// The first whole number that is called positive, from the side of the negative ones.
std::string wholeText(double cutOff, const CutOffReading& reading)
{
    if (reading.largerIsPositive)
        return "at least " + wholeDigits(reading.equalIsPositive ? std::ceil(cutOff) : std::floor(cutOff) + 1.0);
    return "at most " + wholeDigits(reading.equalIsPositive ? std::floor(cutOff) : std::ceil(cutOff) - 1.0);
}

} // namespace

std::string cutOffText(double cutOff, const CutOffReading& reading)
{
    if (std::isnan(cutOff))
        return "";
    switch (reading.positive) {
    case CutOffReading::Calls::all: return "any";
    case CutOffReading::Calls::none: return "none";
    case CutOffReading::Calls::some: break;
    }
    const std::string number = readable(cutOff, CellRole::measure);
    return reading.wholeNumbers && std::isfinite(cutOff) ? number + " (" + wholeText(cutOff, reading) + ")" : number;
}

} // namespace vexroc
