#pragma once

#include "calls/AnalysisRequest.h"
#include "calls/FacadeRun.h"
#include "calls/RowSelection.h"
#include "calls/RunRemarks.h"
#include "calls/RunWatch.h"
#include "calls/SummaryHandle.h"
#include "inference/OperatingPoint.h"
#include "inference/WeightedCurve.h"
#include "vexrocproc/analysis.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ROCALG_920::calls {

/// A run that has ended, with all that a caller may ask of it.
///
/// A request that says no more than one run of the component can be told is that run. Else the records come from runs
/// without a paired comparison, one for the tests of each direction, so that every record is the one of such a run to
/// the bit; and the pairs of tests are formed beside them.
class AnalysisRun {
public:
    struct RunWarning {
        int code;
        std::string name;
        std::vector<int> parameters;
    };
    /// A test in a group.
    struct Record {
        const RunRecord* curve; ///< of the component; its area may be told with another standard error
        vexroc_record told;
        GroupRows rows;
        std::vector<vexroc_cut_off> bestCutOffs;
        std::unique_ptr<const vexroc_summary> summary; ///< where they are kept
        std::optional<WeightedCurve> weighted;         ///< rates that stand in place of those of cases

        [[nodiscard]] const std::vector<std::pair<double, double>>& sensSpec() const
        {
            return weighted ? weighted->sensSpec : curve->getSensitivitySpecificity();
        }
        [[nodiscard]] const std::vector<std::pair<double, double>>& precisionRecall() const
        {
            return weighted ? weighted->precisionRecall : curve->getPrecisionRecallDraw();
        }
        [[nodiscard]] bool isInterpolated(std::size_t i) const { return !weighted && curve->isInterpolated(i); }
    };

    AnalysisRun(const AnalysisRequest& request, const RunCallbacks& callbacks);

    [[nodiscard]] int statusCode() const noexcept { return statusCode_; }
    [[nodiscard]] bool ranOutOfMemory() const noexcept { return ranOutOfMemory_; }
    [[nodiscard]] const std::string& statusName() const noexcept { return statusName_; }
    [[nodiscard]] const std::vector<RunWarning>& warnings() const noexcept { return warnings_; }
    [[nodiscard]] const RowTally& rows() const noexcept { return rows_; }
    [[nodiscard]] const std::vector<Record>& records() const noexcept { return records_; }
    [[nodiscard]] const std::vector<vexroc_comparison>& comparisons() const noexcept { return comparisons_; }
    [[nodiscard]] const RunRemarks& remarks() const noexcept { return *remarks_; }
    /// The same in the spelling of the header.
    [[nodiscard]] const std::vector<remarks::RemarkList::Line>& remarkLines() const noexcept { return remarkLines_; }

private:
    class Assembly;
    void remark(const AnalysisRequest& request);

    int statusCode_ = 0;
    bool ranOutOfMemory_ = false;
    std::string statusName_;
    std::deque<FacadeRun> runs_; ///< which own the curves
    std::vector<RunWarning> warnings_;
    RowTally rows_;
    std::vector<Record> records_;
    std::vector<vexroc_comparison> comparisons_;
    std::optional<RunRemarks> remarks_;
    std::vector<remarks::RemarkList::Line> remarkLines_;
};

} // namespace ROCALG_920::calls
