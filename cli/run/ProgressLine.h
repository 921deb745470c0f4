#pragma once

#include "host/ProgressReport.h"

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <optional>

namespace vexroc {

enum class ProgressForm {
    line, ///< "42 %, 3000000 of 10000000 rows, 1500000 rows/s", over and over on one line of a terminal
    json, ///< {"share":0.42,"rows":3000000,"of":10000000,"rows_per_second":1500000}, each on a line of its own
};

/// Where, how and when progress is told.
struct ProgressDisplay {
    std::ostream* stream = nullptr; ///< null for nowhere
    ProgressForm form = ProgressForm::line;
    std::chrono::milliseconds after{0}; ///< a run that takes less tells none
};

/// Tells how far a run is, at most ten times a second; a line on a terminal is wiped at the end.
class ProgressLine {
public:
    /// The display has a stream.
    ProgressLine(const ProgressDisplay& display, std::size_t rows);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(VexCommon_920::ProgressReport& report);

private:
    using Clock = std::chrono::steady_clock;
    [[nodiscard]] bool isDue(Clock::time_point now) const;

    ProgressDisplay display_;
    std::size_t rows_;
    Clock::time_point start_ = Clock::now();
    std::optional<Clock::time_point> lastShown_;
    std::optional<double> readingSeconds_; ///< once all rows are read
};

} // namespace vexroc
