#include "cli/run/InterruptGuard.h"

#include <unistd.h>

#include <atomic>
#include <string_view>

namespace vexroc {

namespace {

// All that the handlers know of the program.
std::atomic<VexCommon_920::CancelFlag*> flagInForce = nullptr;
std::atomic<int> lastSignal = 0;

extern "C" void requestCancel(int signal) noexcept
{
    lastSignal = signal;
    if (VexCommon_920::CancelFlag* const flag = flagInForce.load())
        flag->Request();
}

/// The handler was reset when it was called: the signal that it raises again ends the program.
extern "C" void sayAndEnd(int signal) noexcept
{
    constexpr std::string_view message = "vexroc: error: interrupted\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, message.data(), message.size());
    raise(signal);
}

/// A handler for one call, unless the signal is ignored.
void handleOnce(int signal, void (*handler)(int), struct sigaction& previous)
{
    sigaction(signal, nullptr, &previous);
    if (previous.sa_handler == SIG_IGN)
        return;
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

} // namespace

InterruptGuard::InterruptGuard(VexCommon_920::CancelFlag& flag)
{
    flagInForce = &flag;
    for (std::size_t i = 0; i < signals.size(); ++i)
        handleOnce(signals[i], requestCancel, previous_[i]);
}

InterruptGuard::~InterruptGuard()
{
    for (std::size_t i = 0; i < signals.size(); ++i)
        sigaction(signals[i], &previous_[i], nullptr);
    flagInForce = nullptr;
}

void sayInterrupts()
{
    struct sigaction previous {};
    handleOnce(SIGINT, sayAndEnd, previous);
}

void endByInterrupt()
{
    if (const int signal = lastSignal.load(); signal != 0) {
        std::signal(signal, SIG_DFL);
        raise(signal);
    }
}

} // namespace vexroc
