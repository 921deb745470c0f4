#pragma once

namespace vexroc {

/// Calls piece(work, index) for each index from 0 to pieces - 1, on all cores that the process may use, and comes back
/// when all have come back. Interrupts go to the calling thread, or to others than the helping ones. `user` is not
/// used: it makes this a vexroc_parallel.
void onAllCores(int pieces, void (*piece)(void* work, int index), void* work, void* user);

} // namespace vexroc
