#include "calls/AnalysisRun.h"

#include "driver/RunFailure.h"
#include "host/ColumnRecordIter.h"
#include "host/FunctionListener.h"
#include "host/VexQueryCancel.h"
#include "numeric/DefaultArithmetic.h"
#include "results/RunRecord.h"
#include "vexrocproc/ROCOutputs.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <map>
#include <utility>

namespace ROCALG_920::calls {

namespace {

/// As the library displays it; it has no names for the ends that are no fault of the settings or the data.
std::string nameOf(int code)
{
    if (code == statusCode::cancelled)
        return "Cancelled";
    if (code == statusCode::unexpected)
        return "Unexpected_Failure";
    std::string name;
    ROCComponentDisplay::ParseErrCodeToStr(code, name);
    return name;
}

class CancelCallback final : public VexCommon_920::VexQueryCancel {
public:
    CancelCallback(vexroc_cancel callback, void* user) : callback_(callback), user_(user) {}
    bool IsCancelRequested() override { return callback_(user_) != 0; }

private:
    vexroc_cancel callback_;
    void* user_;
};

} // namespace

AnalysisRun::AnalysisRun(const AnalysisRequest& request, const Callbacks& callbacks) : variables_(request.variables())
{
    const DefaultArithmetic arithmetic;
    ROCSetting setting = request.setting();
    algorithm_ = std::make_unique<RocAlgorithm>(setting, variables_);
    const RowSelection selection(request.columns(), request.rowRule());
    rows_ = selection.counts();
    VexCommon_920::ColumnRecordIter records(selection.columns());
    build(records, callbacks);
    noteWarnings();
    noteRecords(request);
}

void AnalysisRun::build(VexCommon_920::MultiPassRecordIter& records, const Callbacks& callbacks)
{
    CancelCallback cancel(callbacks.cancel, callbacks.cancelUser);
    VexCommon_920::FunctionListener listener([&callbacks](VexCommon_920::ProgressReport& report) {
        callbacks.progress(report.ScaleMeasure("percentage"), report.DiscreteMeasure("records"),
                           callbacks.progressUser);
    });
    algorithm_->SetCancelPtr(callbacks.cancel != nullptr ? &cancel : nullptr);
    algorithm_->SetProgressListener(callbacks.progress != nullptr ? &listener : nullptr);
    statusCode_ = static_cast<int>(algorithm_->BuildModel(records).GetErrorCode());
    algorithm_->SetCancelPtr(nullptr);
    algorithm_->SetProgressListener(nullptr);
    ranOutOfMemory_ = RunFailure::ranOutOfMemory(*algorithm_);
    statusName_ = nameOf(statusCode_);
}

void AnalysisRun::noteWarnings()
{
    const VexCommon_920::VexWarnings& warnings = algorithm_->GetWarningMessages();
    for (int i = 0; i < warnings.GetCount(); ++i) {
        const int code = static_cast<int>(warnings.GetStatus(i).GetErrorCode());
        warnings_.push_back({code, nameOf(code), {}});
        for (const auto& parameter : warnings.GetParameters(i))
            warnings_.back().parameters.push_back(parameter.GetInt());
    }
}

void AnalysisRun::noteRecords(const AnalysisRequest& request)
{
    std::map<std::pair<int, double>, GroupRows> known; // by operation and value: there are two groups at most
    for (const ROCOutBase* const record : records()) {
        bestCutOffs_.push_back(RunRecord::of(*record).bestCutOffs());
        const double value = record->getGroupVarInd() < 0 ? 0.0 : record->getGroupValue();
        const auto [rows, isNew] = known.try_emplace({record->getGroupValueOperation(), value});
        if (isNew)
            rows->second = rowsOf(*record, request);
        groupRows_.push_back(rows->second);
    }
}

GroupRows AnalysisRun::rowsOf(const ROCOutBase& record, const AnalysisRequest& request) const
{
    if (record.getGroupVarInd() < 0)
        return {rows_.rows.read, rows_.rows.positive + rows_.rows.negative + rows_.rows.incomplete};
    return countMembers(request.columns(), request.rowRule(), [&](double value) {
        switch (record.getGroupValueOperation()) {
        case ROCConst_920::Equal: return value == record.getGroupValue();
        case ROCConst_920::GreaterOrEqual: return value >= record.getGroupValue();
        case ROCConst_920::Less: return value < record.getGroupValue();
        }
        return false; // no such operation
    });
}

std::span<ROCOutBase* const> AnalysisRun::records() const noexcept
{
    const ROCOutputs* const outputs = algorithm_->GetOutputStats();
    return outputs != nullptr ? std::span<ROCOutBase* const>(outputs->getROCBaseStats())
                              : std::span<ROCOutBase* const>();
}

std::span<ROCComparisonOutStats* const> AnalysisRun::comparisons() const noexcept
{
    const ROCOutputs* const outputs = algorithm_->GetOutputStats();
    return outputs != nullptr ? std::span<ROCComparisonOutStats* const>(outputs->getROCComparisonStats())
                              : std::span<ROCComparisonOutStats* const>();
}

} // namespace ROCALG_920::calls
