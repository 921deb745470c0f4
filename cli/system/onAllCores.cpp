#include "cli/system/onAllCores.h"

#include "cli/system/InterruptGuard.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <system_error>
#include <thread>
#include <vector>

namespace vexroc {

namespace {

/// While it lives, the thread gets no interrupt, nor do threads that it starts, ever.
class WithoutInterrupts {
public:
    WithoutInterrupts()
    {
        sigset_t blocked;
        sigemptyset(&blocked);
        for (const int signal : interrupts)
            sigaddset(&blocked, signal);
        pthread_sigmask(SIG_BLOCK, &blocked, &previous_);
    }
    ~WithoutInterrupts() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
    WithoutInterrupts(const WithoutInterrupts&) = delete;
    WithoutInterrupts& operator=(const WithoutInterrupts&) = delete;

private:
    sigset_t previous_{};
};

/// As many as the system gives; none of them is needed.
std::vector<std::jthread> helpers(int count, const auto& work)
{
    const WithoutInterrupts inherited;
    std::vector<std::jthread> threads;
    try {
        for (int i = 0; i < count; ++i)
            threads.emplace_back(work);
    } catch (const std::system_error&) { // those that there are share the work
    }
    return threads;
}

} // namespace

void onAllCores(int pieces, void (*piece)(void* work, int index), void* work, void* /*user*/)
{
    std::atomic<int> next = 0;
    const auto takePieces = [&] {
        for (int index = next++; index < pieces; index = next++)
            piece(work, index);
    };
    const int cores = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    const std::vector<std::jthread> others = helpers(std::min(cores, pieces) - 1, takePieces);
    takePieces();
}

} // namespace vexroc
