#pragma once

#include "vexrocproc/analysis.h"

#include <algorithm>

namespace ROCALG_920::calls {

struct RunCallbacks {
    vexroc_progress progress = nullptr;
    void* progressUser = nullptr;
    vexroc_cancel cancel = nullptr;
    void* cancelUser = nullptr;
    vexroc_parallel parallel = nullptr;
    void* parallelUser = nullptr;
};

/// Tells the progress of a run that has several parts as that of one, and asks whether to stop.
class RunWatch {
public:
    /// The work of all parts, in any unit.
    RunWatch(const RunCallbacks& callbacks, double work) : callbacks_(callbacks), work_(work) {}

    void beginPart(double work)
    {
        done_ += part_;
        part_ = work;
    }
    /// How much of the part is done, in [0, 1].
    void tell(double share, int records = 0)
    {
        records_ = std::max(records_, records);
        if (callbacks_.progress != nullptr)
            callbacks_.progress((done_ + part_ * share) / work_, records_, callbacks_.progressUser);
    }
    /// Work piece by piece, on the caller's threads or on this one.
    [[nodiscard]] const RunCallbacks& callbacks() const noexcept { return callbacks_; }
    /// Tells, and asks: false to stop.
    [[nodiscard]] bool goOn(double share)
    {
        tell(share);
        return !cancelRequested();
    }
    [[nodiscard]] bool listens() const noexcept { return callbacks_.progress != nullptr; }
    [[nodiscard]] bool isAsked() const noexcept { return callbacks_.cancel != nullptr; }
    [[nodiscard]] bool cancelRequested() { return isAsked() && callbacks_.cancel(callbacks_.cancelUser) != 0; }

private:
    RunCallbacks callbacks_;
    double work_;
    double done_ = 0.0;
    double part_ = 0.0;
    int records_ = 0;
};

} // namespace ROCALG_920::calls
