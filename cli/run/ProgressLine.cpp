#include "cli/run/ProgressLine.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace vexroc {

namespace {

constexpr const char* wipedLine = "\r\x1b[K";

// The component announces these shares before the first record and behind the last; between, only the records count.
constexpr double shareBeforeRecords = 0.03;
constexpr double shareAfterRecords = 0.2;

} // namespace

ProgressLine::ProgressLine(const ProgressDisplay& display, std::size_t rows) : display_(display), rows_(rows)
{
}

ProgressLine::~ProgressLine()
{
    if (lastShown_ && display_.form == ProgressForm::line)
        *display_.stream << wipedLine << std::flush;
}

void ProgressLine::show(VexCommon_920::ProgressReport& report)
{
    const Clock::time_point now = Clock::now();
    const double share = report.ScaleMeasure("percentage");
    const double records = std::max(report.DiscreteMeasure("records"), 0);
    const double seconds = std::chrono::duration<double>(now - start_).count();
    if (share >= shareAfterRecords && !readingSeconds_)
        readingSeconds_ = seconds;
    if (!isDue(now))
        return;
    lastShown_ = now;
    const double read = rows_ > 0 ? std::min(records / static_cast<double>(rows_), 1.0) : 1.0;
    const double done = std::max(share, shareBeforeRecords + (shareAfterRecords - shareBeforeRecords) * read);
    const double perSecond = records / std::max(readingSeconds_.value_or(seconds), 1e-3);
    if (display_.form == ProgressForm::json)
        *display_.stream << "{\"share\":" << static_cast<double>(std::lround(1000.0 * done)) / 1000.0
                         << ",\"rows\":" << std::llround(records) << ",\"of\":" << rows_
                         << ",\"rows_per_second\":" << std::llround(perSecond) << '}' << std::endl;
    else
        *display_.stream << wipedLine << "vexroc: " << std::lround(100.0 * done) << " %, " << std::llround(records)
                         << " of " << rows_ << " rows, " << std::llround(perSecond) << " rows/s" << std::flush;
}

bool ProgressLine::isDue(Clock::time_point now) const
{
    constexpr std::chrono::milliseconds pause{100};
    return lastShown_ ? now - *lastShown_ >= pause : now - start_ >= display_.after;
}

} // namespace vexroc
