#pragma once

#include "cli/words/Failure.h"
#include "vexrocproc/analysis.h"

namespace vexroc {

/// Throws an analysis error, in the component's words, for any answer of its calls but VEXROC_OK.
inline void require(int result)
{
    if (result != VEXROC_OK)
        throw analysisError(vexroc_last_error());
}

} // namespace vexroc
