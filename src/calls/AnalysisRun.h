#pragma once

#include "calls/AnalysisRequest.h"
#include "calls/RowSelection.h"
#include "host/MultiPassRecordIter.h"
#include "inference/OperatingPoint.h"
#include "vexrocproc/RocAlgorithm.h"
#include "vexrocproc/analysis.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ROCALG_920::calls {

/// A run that has ended, with all that a caller may ask of it.
class AnalysisRun {
public:
    struct RunWarning {
        int code;
        std::string name;
        std::vector<int> parameters;
    };
    struct Callbacks {
        vexroc_progress progress = nullptr;
        void* progressUser = nullptr;
        vexroc_cancel cancel = nullptr;
        void* cancelUser = nullptr;
    };

    AnalysisRun(const AnalysisRequest& request, const Callbacks& callbacks);

    [[nodiscard]] int statusCode() const noexcept { return statusCode_; }
    [[nodiscard]] bool ranOutOfMemory() const noexcept { return ranOutOfMemory_; }
    [[nodiscard]] const std::string& statusName() const noexcept { return statusName_; }
    [[nodiscard]] const std::vector<RunWarning>& warnings() const noexcept { return warnings_; }
    [[nodiscard]] const RowTally& rows() const noexcept { return rows_; }
    [[nodiscard]] std::span<ROCOutBase* const> records() const noexcept;
    [[nodiscard]] std::span<ROCComparisonOutStats* const> comparisons() const noexcept;
    /// Of each record.
    [[nodiscard]] const std::vector<GroupRows>& groupRows() const noexcept { return groupRows_; }
    /// Of each record.
    [[nodiscard]] const std::vector<std::vector<OperatingPoint>>& bestCutOffs() const noexcept { return bestCutOffs_; }

private:
    void build(VexCommon_920::MultiPassRecordIter& records, const Callbacks& callbacks);
    void noteWarnings();
    void noteRecords(const AnalysisRequest& request);
    [[nodiscard]] GroupRows rowsOf(const ROCOutBase& record, const AnalysisRequest& request) const;

    VexXML_920::VexVarList variables_;
    std::unique_ptr<RocAlgorithm> algorithm_;
    int statusCode_ = 0;
    bool ranOutOfMemory_ = false;
    std::string statusName_;
    std::vector<RunWarning> warnings_;
    RowTally rows_;
    std::vector<GroupRows> groupRows_;
    std::vector<std::vector<OperatingPoint>> bestCutOffs_;
};

} // namespace ROCALG_920::calls
