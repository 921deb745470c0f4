#pragma once

namespace ROCALG_920 {

/// Holds every sum over the values of up to 2^40 cases exactly. With P + N = 2^40 the largest of them, 4 P N^2 of the
/// squared placements, stays below 2^120.
__extension__ typedef __int128 Int128;

} // namespace ROCALG_920
