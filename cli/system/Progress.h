#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace vexroc {

/// Goes to the start of a terminal's line and empties it.
constexpr const char* wipedLine = "\r\x1b[K";

/// Where, how and when progress is told.
struct ProgressDisplay {
    std::ostream* stream = nullptr;     ///< null for nowhere
    std::chrono::milliseconds after{0}; ///< a phase that takes less tells none
};

/// Tells how far a phase of a run is, at most ten times a second, over and over on one line of a terminal, which is
/// wiped at the end.
class ProgressTeller {
public:
    using Clock = std::chrono::steady_clock;

    explicit ProgressTeller(const ProgressDisplay& display) : display_(display) {}
    ~ProgressTeller();
    ProgressTeller(const ProgressTeller&) = delete;
    ProgressTeller& operator=(const ProgressTeller&) = delete;

    [[nodiscard]] bool isDue(Clock::time_point now) const;
    void tell(Clock::time_point now, const std::string& words);
    [[nodiscard]] bool hasTold() const noexcept { return lastTold_.has_value(); }
    [[nodiscard]] double secondsUntil(Clock::time_point now) const;

private:
    ProgressDisplay display_;
    Clock::time_point start_ = Clock::now();
    std::optional<Clock::time_point> lastTold_;
};

/// Progress of an analysis, as the component reports it: "analyzing: 42 %, 3000000 of 10000000 rows, 1500000 rows/s".
class AnalysisProgress {
public:
    /// The display has a stream.
    AnalysisProgress(const ProgressDisplay& display, std::size_t rows) : teller_(display), rows_(rows) {}
    /// The share of the work that is done, and the records read so far.
    void show(double announced, int records);
    /// All work is done; tells so where anything was told.
    void end();

private:
    ProgressTeller teller_;
    std::size_t rows_;
    std::optional<double> readingSeconds_; ///< once all rows are read
};

/// Progress of reading rows whose number is not known before: "reading: 42 %, 3000000 rows, 1500000 rows/s".
class ReadingProgress {
public:
    /// How much of the input is read, 0 to 1; none where nobody knows.
    using Share = std::function<std::optional<double>()>;

    /// Tells nothing when the display has no stream.
    ReadingProgress(const ProgressDisplay& display, Share share);
    /// So many rows are read.
    void tell(std::size_t rows)
    {
        if (rows >= nextLook_ && teller_)
            look(rows);
    }

private:
    static constexpr std::size_t rowsBetweenLooks = 8192; // a look at the clock costs more than a row
    void look(std::size_t rows);

    std::optional<ProgressTeller> teller_;
    Share share_;
    std::size_t nextLook_ = rowsBetweenLooks;
};

} // namespace vexroc
