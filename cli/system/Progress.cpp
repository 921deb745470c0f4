#include "cli/system/Progress.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace vexroc {

namespace {

// The component announces these shares before the first record and behind the last; between, only the records count.
constexpr double shareBeforeRecords = 0.03;
constexpr double shareAfterRecords = 0.2;

std::string rounded(double value) { return std::to_string(std::llround(value)); }

} // namespace

ProgressTeller::~ProgressTeller()
{
    if (lastTold_)
        *display_.stream << wipedLine << std::flush;
}

bool ProgressTeller::isDue(Clock::time_point now) const
{
    constexpr std::chrono::milliseconds pause{100};
    return lastTold_ ? now - *lastTold_ >= pause : now - start_ >= display_.after;
}

double ProgressTeller::secondsUntil(Clock::time_point now) const
{
    return std::max(std::chrono::duration<double>(now - start_).count(), 1e-3);
}

void ProgressTeller::tell(Clock::time_point now, const std::string& words)
{
    lastTold_ = now;
    *display_.stream << wipedLine << "vexroc: " << words << std::flush;
}

void AnalysisProgress::show(double announced, int recordsRead)
{
    const ProgressTeller::Clock::time_point now = ProgressTeller::Clock::now();
    const double records = std::max(recordsRead, 0);
    if (announced >= shareAfterRecords && !readingSeconds_)
        readingSeconds_ = teller_.secondsUntil(now);
    if (!teller_.isDue(now))
        return;
    const double read = rows_ > 0 ? std::min(records / static_cast<double>(rows_), 1.0) : 1.0;
    const double done = std::max(announced, shareBeforeRecords + (shareAfterRecords - shareBeforeRecords) * read);
    const std::string perSecond = rounded(records / readingSeconds_.value_or(teller_.secondsUntil(now)));
    teller_.tell(now,
                 "analyzing: " + rounded(100.0 * done) + " %, " + rounded(records) + " of " + std::to_string(rows_)
                     + " rows, " + perSecond + " rows/s");
}

void AnalysisProgress::end()
{
    if (teller_.hasTold())
        teller_.tell(ProgressTeller::Clock::now(), "analyzing: 100 %, " + std::to_string(rows_) + " rows");
}

ReadingProgress::ReadingProgress(const ProgressDisplay& display, Share share) : share_(std::move(share))
{
    if (display.stream != nullptr)
        teller_.emplace(display);
}

void ReadingProgress::look(std::size_t rowsRead)
{
    nextLook_ = rowsRead + rowsBetweenLooks;
    const ProgressTeller::Clock::time_point now = ProgressTeller::Clock::now();
    if (!teller_->isDue(now))
        return;
    const std::string rows = std::to_string(rowsRead);
    const std::string perSecond = rounded(static_cast<double>(rowsRead) / teller_->secondsUntil(now));
    const std::optional<double> read = share_();
    const std::string percentage = read ? rounded(100.0 * *read) + " %, " : "";
    teller_->tell(now, "reading: " + percentage + rows + " rows, " + perSecond + " rows/s");
}

} // namespace vexroc
