#pragma once

#include "host/CancelFlag.h"

#include <csignal>

namespace vexroc {

/// While it lives, an interrupt (Ctrl-C) requests a cancel through the flag instead of ending the program; a second
/// interrupt ends it at once. At the end, what interrupts did before is restored. An interrupt that was ignored, as in
/// a background job of a shell, stays ignored.
///
/// At most one at a time, on any thread.
class InterruptGuard {
public:
    explicit InterruptGuard(VexCommon_920::CancelFlag& flag);
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

private:
    struct sigaction previous_ {};
};

} // namespace vexroc
