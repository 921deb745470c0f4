#include "cli/system/InterruptGuard.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string_view>

namespace vexroc {

namespace {

// All that the handlers know of the program.
std::atomic<VexCommon_920::CancelFlag*> flagInForce = nullptr;
std::atomic<int> lastSignal = 0;
bool isQuiet = false; // these two are set before a handler is
bool hasProgressLine = false;

void say(std::string_view message) noexcept
{
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, message.data(), message.size());
}

extern "C" void requestCancel(int signal) noexcept
{
    const int callersError = errno;
    lastSignal = signal;
    if (VexCommon_920::CancelFlag* const flag = flagInForce.load())
        flag->Request();
    if (hasProgressLine)
        say(wipedLine);
    if (!isQuiet)
        say(signal == SIGINT ? "vexroc: note: cancelling; Ctrl-C again ends at once\n" : "vexroc: note: cancelling\n");
    errno = callersError;
}

/// The handler was reset when it was called: the signal that it raises again ends the program.
extern "C" void sayAndEnd(int signal) noexcept
{
    say("vexroc: error: interrupted\n");
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

InterruptGuard::InterruptGuard(VexCommon_920::CancelFlag& flag, const Surroundings& surroundings)
{
    flagInForce = &flag;
    isQuiet = surroundings.quiet;
    hasProgressLine = surroundings.progress.stream != nullptr;
    for (std::size_t i = 0; i < interrupts.size(); ++i)
        handleOnce(interrupts[i], requestCancel, previous_[i]);
}

InterruptGuard::~InterruptGuard()
{
    for (std::size_t i = 0; i < interrupts.size(); ++i)
        sigaction(interrupts[i], &previous_[i], nullptr);
    flagInForce = nullptr;
}

void sayInterrupts()
{
    struct sigaction previous {};
    for (const int signal : interrupts)
        handleOnce(signal, sayAndEnd, previous);
}

void endByInterrupt()
{
    if (const int signal = lastSignal.load(); signal != 0) {
        std::signal(signal, SIG_DFL);
        raise(signal);
    }
}

} // namespace vexroc
