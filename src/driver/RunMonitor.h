#pragma once

#include "driver/ROCReporter.h"
#include "host/ProgressListener.h"
#include "host/VexCancelInfo.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace ROCALG_920 {

/// What a run tells the host and asks it: progress, if it listens, and whether to stop.
class RunMonitor {
public:
    RunMonitor(VexCommon_920::ProgressListener* listener, VexMath_920::VexCancelInfo& cancelInfo)
        : listener_(listener), cancelInfo_(cancelInfo)
    {
    }

    [[nodiscard]] bool cancelled() { return cancelInfo_.IsCancel(); }
    /// share of the run that is done, in [0, 1].
    void announceShare(double share)
    {
        reporter_.SetPercentage(share);
        notify();
    }
    void announceRecords(std::int64_t records)
    {
        setRecords(records);
        notify();
    }
    /// A count beyond what a report can tell stays at its limit.
    void setRecords(std::int64_t records)
    {
        reporter_.SetNRecords(static_cast<int>(std::min<std::int64_t>(records, std::numeric_limits<int>::max())));
    }

private:
    void notify()
    {
        if (listener_ != nullptr)
            listener_->Notify(reporter_);
    }

    ROCReporter reporter_{0};
    VexCommon_920::ProgressListener* listener_;
    VexMath_920::VexCancelInfo& cancelInfo_;
};

} // namespace ROCALG_920
