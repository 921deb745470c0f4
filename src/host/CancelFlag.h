#pragma once

#include "host/VexQueryCancel.h"

#include <atomic>

namespace VexCommon_920 {

/// A cancel query to trip from another thread or from a signal handler.
///
/// Life: not requested until Request, then requested until Reset. Both are lock-free and safe in signal handlers.
class [[gnu::visibility("default")]] CancelFlag final : public VexQueryCancel
{
public:
    void Request() noexcept { requested_.store(true, std::memory_order_relaxed); }
    void Reset() noexcept { requested_.store(false, std::memory_order_relaxed); }
    [[nodiscard]] bool IsCancelRequested() override;

private:
    static_assert(std::atomic<bool>::is_always_lock_free, "a lock could deadlock in a signal handler");
    std::atomic<bool> requested_ = false; // relaxed: the flag is all that passes between the threads
};

} // namespace VexCommon_920
