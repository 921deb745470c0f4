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

/// A share with three decimals, in any locale.
std::string share(double value)
{
    const std::string thousandths = rounded(1000.0 * value);
    return thousandths.size() > 3 ? "1" : "0." + std::string(3 - thousandths.size(), '0').append(thousandths);
}

} // namespace

ProgressTeller::~ProgressTeller()
{
    if (lastTold_ && display_.form == ProgressForm::line)
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

void ProgressTeller::tell(Clock::time_point now, const std::string& words, const std::string& members)
{
    lastTold_ = now;
    if (display_.form == ProgressForm::json)
        *display_.stream << '{' << members << "}\n" << std::flush;
    else
        *display_.stream << wipedLine << "vexroc: " << words << std::flush;
}

void AnalysisProgress::show(VexCommon_920::ProgressReport& report)
{
    const ProgressTeller::Clock::time_point now = ProgressTeller::Clock::now();
    const double announced = report.ScaleMeasure("percentage");
    const double records = std::max(report.DiscreteMeasure("records"), 0);
    if (announced >= shareAfterRecords && !readingSeconds_)
        readingSeconds_ = teller_.secondsUntil(now);
    if (!teller_.isDue(now))
        return;
    const double read = rows_ > 0 ? std::min(records / static_cast<double>(rows_), 1.0) : 1.0;
    const double done = std::max(announced, shareBeforeRecords + (shareAfterRecords - shareBeforeRecords) * read);
    const std::string perSecond = rounded(records / readingSeconds_.value_or(teller_.secondsUntil(now)));
    const std::string all = std::to_string(rows_);
    teller_.tell(now,
                 rounded(100.0 * done) + " %, " + rounded(records) + " of " + all + " rows, " + perSecond + " rows/s",
                 "\"phase\":\"analysis\",\"share\":" + share(done) + ",\"rows\":" + rounded(records) + ",\"of\":" + all
                     + ",\"rows_per_second\":" + perSecond);
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
    const std::string shareMember = read ? "\"share\":" + share(*read) + "," : "";
    teller_->tell(now, "reading: " + percentage + rows + " rows, " + perSecond + " rows/s",
                  "\"phase\":\"reading\"," + shareMember + "\"rows\":" + rows + ",\"rows_per_second\":" + perSecond);
}

} // namespace vexroc
