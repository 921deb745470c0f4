#pragma once

#include "host/ProgressReport.h"

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <optional>

namespace vexroc {

/// One line of a terminal that tells how far a run is: "42 %, 3000000 of 10000000 rows, 1500000 rows/s".
///
/// Life: shows nothing before `after` has passed, then what the last report told, at most ten times a second; the line
/// is wiped at the end.
class ProgressLine {
public:
    ProgressLine(std::ostream& terminal, std::chrono::milliseconds after, std::size_t rows);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(VexCommon_920::ProgressReport& report);

private:
    using Clock = std::chrono::steady_clock;
    [[nodiscard]] bool isDue(Clock::time_point now) const;

    std::ostream& terminal_;
    std::chrono::milliseconds after_;
    std::size_t rows_;
    Clock::time_point start_ = Clock::now();
    std::optional<Clock::time_point> lastShown_;
    std::optional<double> readingSeconds_; ///< once all rows are read
};

} // namespace vexroc
