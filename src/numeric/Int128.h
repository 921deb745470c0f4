#pragma once

namespace ROCALG_920 {

/// Holds every sum over a table of up to 2^31 - 1 cases exactly: the largest is below 2^125.
__extension__ typedef __int128 Int128;

} // namespace ROCALG_920
