#pragma once

#include "vexrocproc/analysis.h"

#include <cstdint>
#include <functional>

namespace ROCALG_920::calls {

/// Who runs pieces of work, and is asked between them.
struct PieceRunner {
    vexroc_parallel parallel; ///< null: one after the other
    void* user;
    std::function<bool(double)> goOn; ///< told the share that is done after every 1024; false cancels. May be empty
};

/// Calls work(first, count) for ranges that make up 0 to `total` - 1, on the runner's threads: ranges must know nothing
/// of each other. False when cancelled. Throws what a piece threw.
[[nodiscard]] bool runInPieces(const PieceRunner& runner, std::int64_t total,
                               const std::function<void(std::int64_t first, std::int64_t count)>& work);

} // namespace ROCALG_920::calls
