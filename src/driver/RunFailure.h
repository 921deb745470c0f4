#pragma once

#include "driver/ROCCompute.h"
#include "vexrocproc/RocAlgorithm.h"

namespace ROCALG_920 {

/// What the status of a run that an exception ended does not tell; callers within the library report it in their own
/// way.
class RunFailure {
public:
    /// Did memory run out in the facade's last run?
    [[nodiscard]] static bool ranOutOfMemory(const RocAlgorithm& facade) { return facade.compute_->ranOutOfMemory(); }
};

} // namespace ROCALG_920
