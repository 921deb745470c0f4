#pragma once

#include "calls/RunWatch.h"
#include "summary/Summary.h"
#include "vexrocproc/analysis.h"

#include <cstdint>
#include <functional>
#include <span>

namespace ROCALG_920::calls {

/// Who runs pieces of work, and is asked between them.
struct PieceRunner {
    vexroc_parallel parallel; ///< null: one after the other
    void* user;
    std::function<bool(double)> goOn; ///< told the share that is done after every 1024; false cancels. May be empty
};

/// On the threads of a watched run, telling how far the part is; the run outlives it.
[[nodiscard]] PieceRunner runnerOf(RunWatch& watch);

/// Calls work(first, count) for ranges that make up 0 to `total` - 1, on the runner's threads: ranges must know nothing
/// of each other. False when cancelled. Throws what a piece threw.
[[nodiscard]] bool runInPieces(const PieceRunner& runner, std::int64_t total,
                               const std::function<void(std::int64_t first, std::int64_t count)>& work);

/// Draws the replicates of 2 U from `first` on, as many as there are places. False when cancelled.
[[nodiscard]] bool drawReplicates(const Summary& sample, std::uint64_t seed, std::int64_t first,
                                  std::span<std::int64_t> twiceU, const PieceRunner& runner);

} // namespace ROCALG_920::calls
