#pragma once

#include "host/ProgressReport.h"

#include <string>

namespace ROCALG_920 {

/// What a listener is shown of a running analysis: the measures "records" and "percentage".
class ROCReporter : public VexCommon_920::ProgressReport {
public:
    explicit ROCReporter(int nRecords) : nRecords_(nRecords) {}

    /// Records read so far in the current pass.
    void SetNRecords(int n) noexcept { nRecords_ = n; }
    /// Share of the run that is done, in [0, 1].
    void SetPercentage(double p) noexcept { percentage_ = p; }

    [[nodiscard]] int DiscreteMeasure(const std::string& name) override;
    [[nodiscard]] double ScaleMeasure(const std::string& name) override;

private:
    int nRecords_;
    double percentage_ = 0.0;
};

} // namespace ROCALG_920
