#pragma once

#include "cli/system/Surroundings.h"

#include "host/CancelFlag.h"

#include <array>
#include <csignal>

namespace vexroc {

/// The signals that are interrupts.
constexpr std::array interrupts{SIGINT, SIGTERM, SIGHUP};

/// While it lives, an interrupt (Ctrl-C, or being told to terminate or hang up) requests a cancel through the flag
/// instead of ending the program, and says so unless the run is quiet; a second one of its kind ends it at once. At the
/// end, what interrupts did before is restored. An interrupt that was ignored, as in a background job of a shell, stays
/// ignored.
///
/// At most one at a time, on any thread.
class InterruptGuard {
public:
    InterruptGuard(VexCommon_920::CancelFlag& flag, const Surroundings& surroundings);
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

private:
    std::array<struct sigaction, interrupts.size()> previous_{};
};

/// From now on an interrupt outside of every guard says so before it ends the program, as its signal does.
void sayInterrupts();

/// Ends the program by the signal that last requested a cancel through a guard, as shells expect it; returns when there
/// was none.
void endByInterrupt();

} // namespace vexroc
