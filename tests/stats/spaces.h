#pragma once

#include "space/ROCSpace.h"
#include "tests/support/Sample.h"

namespace roctest {

/// A space as the area statistics use it: observations only, no curve.
[[nodiscard]] inline ROCALG_920::ROCSpace areaSpace(std::span<const double> states, std::span<const double> values,
                                                    int testVariable = 0)
{
    ROCALG_920::ROCSpace space(true, true, false, false, true);
    space.setTestVarInd(testVariable);
    for (std::size_t i = 0; i < states.size(); ++i)
        space.update(states[i] == 1.0, values[i], 1);
    return space;
}

} // namespace roctest
