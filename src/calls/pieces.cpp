#include "calls/pieces.h"

#include "inference/Bootstrap.h"
#include "numeric/DefaultArithmetic.h"

#include <algorithm>
#include <exception>
#include <mutex>

namespace ROCALG_920::calls {

namespace {

constexpr std::int64_t betweenQuestions = 1024;
constexpr std::int64_t pieceLength = 32;

/// What lies between two questions, in pieces that may run at once.
class Batch {
public:
    Batch(std::int64_t first, std::int64_t end, const std::function<void(std::int64_t, std::int64_t)>& work)
        : first_(first), end_(end), work_(work)
    {
    }
    void run(const PieceRunner& runner)
    {
        const auto pieces = static_cast<int>((end_ - first_ + pieceLength - 1) / pieceLength);
        if (runner.parallel != nullptr)
            runner.parallel(pieces, runPiece, this, runner.user);
        else
            for (int index = 0; index < pieces; ++index)
                runPiece(this, index);
        if (failure_)
            std::rethrow_exception(failure_);
    }

private:
    static void runPiece(void* batch, int index) noexcept { static_cast<Batch*>(batch)->run(index); }
    /// On any thread: no exception may leave it.
    void run(int index) noexcept
    {
        const DefaultArithmetic arithmetic;
        const std::int64_t first = first_ + index * pieceLength;
        try {
            work_(first, std::min(pieceLength, end_ - first));
        } catch (...) {
            const std::scoped_lock lock(failing_);
            failure_ = std::current_exception();
        }
    }

    std::int64_t first_;
    std::int64_t end_;
    const std::function<void(std::int64_t, std::int64_t)>& work_;
    std::mutex failing_;
    std::exception_ptr failure_;
};

} // namespace

PieceRunner runnerOf(RunWatch& watch)
{
    const RunCallbacks& callbacks = watch.callbacks();
    return {callbacks.parallel, callbacks.parallelUser, [&watch](double share) { return watch.goOn(share); }};
}

bool runInPieces(const PieceRunner& runner, std::int64_t total,
                 const std::function<void(std::int64_t, std::int64_t)>& work)
{
    for (std::int64_t first = 0; first < total; first += betweenQuestions) {
        const std::int64_t end = std::min(total, first + betweenQuestions);
        Batch(first, end, work).run(runner);
        if (runner.goOn && !runner.goOn(static_cast<double>(end) / static_cast<double>(total)))
            return false;
    }
    return true;
}

bool drawReplicates(const Summary& sample, std::uint64_t seed, std::int64_t first, std::span<std::int64_t> twiceU,
                    const PieceRunner& runner)
{
    const AreaBootstrap bootstrap(sample, seed);
    return runInPieces(runner, static_cast<std::int64_t>(twiceU.size()), [&](std::int64_t begin, std::int64_t count) {
        bootstrap.draw(static_cast<std::uint64_t>(first + begin),
                       twiceU.subspan(static_cast<std::size_t>(begin), static_cast<std::size_t>(count)));
    });
}

} // namespace ROCALG_920::calls
