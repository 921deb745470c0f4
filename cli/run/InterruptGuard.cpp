#include "cli/run/InterruptGuard.h"

#include <atomic>

namespace vexroc {

namespace {

std::atomic<VexCommon_920::CancelFlag*> flagInForce = nullptr; // all that the handler knows of the program

extern "C" void requestCancel(int) noexcept
{
    if (VexCommon_920::CancelFlag* const flag = flagInForce.load())
        flag->Request();
}

} // namespace

InterruptGuard::InterruptGuard(VexCommon_920::CancelFlag& flag)
{
    flagInForce = &flag;
    sigaction(SIGINT, nullptr, &previous_);
    if (previous_.sa_handler == SIG_IGN)
        return;
    struct sigaction action {};
    action.sa_handler = requestCancel;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

InterruptGuard::~InterruptGuard()
{
    sigaction(SIGINT, &previous_, nullptr);
    flagInForce = nullptr;
}

} // namespace vexroc
