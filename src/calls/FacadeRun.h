#pragma once

#include "calls/AnalysisRequest.h"
#include "calls/RunWatch.h"
#include "host/VexVarList.h"
#include "results/RunRecord.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/RocAlgorithm.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace ROCALG_920::calls {

/// One run of the component for some of the tests of a request, which share their direction.
class FacadeRun {
public:
    /// Positions in the request's list of tests, and how these are compared; groups take part unless nothing is.
    struct Plan {
        std::vector<std::size_t> tests;
        ROCConst_920::ComparisonType comparison;
        bool grouped = true;
    };

    /// The columns are all those of the request, of the rows that take part.
    FacadeRun(const AnalysisRequest& request, Plan plan, const std::vector<std::span<const double>>& columns,
              RunWatch& watch);

    [[nodiscard]] const Plan& plan() const noexcept { return plan_; }
    [[nodiscard]] int statusCode() const noexcept { return statusCode_; }
    [[nodiscard]] bool ranOutOfMemory() const;
    [[nodiscard]] const VexCommon_920::VexWarnings& warnings() const { return algorithm_->GetWarningMessages(); }
    /// After a run that ended well: of each test as many as it has groups.
    [[nodiscard]] std::span<ROCOutBase* const> records() const;
    [[nodiscard]] std::span<ROCComparisonOutStats* const> comparisons() const;
    /// The column of the request behind a parameter of a warning.
    [[nodiscard]] int columnOf(int parameter) const { return columnOf_[static_cast<std::size_t>(parameter)]; }

private:
    int use(int column);
    [[nodiscard]] ROCSetting setting(const AnalysisRequest& request);
    void build(std::vector<std::span<const double>> columns, RunWatch& watch);

    Plan plan_;
    std::vector<int> columnOf_; ///< of the request, by position in the run's records
    VexXML_920::VexVarList variables_;
    std::unique_ptr<RocAlgorithm> algorithm_;
    int statusCode_ = 0;
};

} // namespace ROCALG_920::calls
