#pragma once

#include "cli/study/Run.h"
#include "cli/system/InterruptGuard.h"
#include "cli/system/Progress.h"
#include "cli/system/Surroundings.h"
#include "cli/system/onAllCores.h"
#include "cli/words/Failure.h"
#include "host/CancelFlag.h"

#include <cstddef>
#include <optional>

namespace vexroc {

/// While it lasts, progress of an analysis is told where the surroundings wants it, and an interrupt requests a cancel.
class AnalysisWatch {
public:
    AnalysisWatch(const Surroundings& surroundings, std::size_t rows) : guard_(cancel_, surroundings)
    {
        if (surroundings.progress.stream != nullptr)
            line_.emplace(surroundings.progress, rows);
    }

    /// Refers to this object.
    [[nodiscard]] Watch watch(Remarks* remarks)
    {
        Watch watch{.cancelRequested = [this] { return cancel_.IsCancelRequested(); },
                    .parallel = onAllCores,
                    .remarks = remarks};
        if (line_)
            watch.progress = [this](double share, int records) { line_->show(share, records); };
        return watch;
    }
    /// The analysis is over: no more progress.
    void endProgress()
    {
        if (line_)
            line_->end();
        line_.reset();
    }
    /// Throws the failure of a cancel when one was requested.
    void requireNotCancelled()
    {
        if (cancel_.IsCancelRequested())
            throw cancelled();
    }

private:
    VexCommon_920::CancelFlag cancel_;
    InterruptGuard guard_;
    std::optional<AnalysisProgress> line_;
};

} // namespace vexroc
