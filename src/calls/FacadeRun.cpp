#include "calls/FacadeRun.h"

#include "driver/RunFailure.h"
#include "host/ColumnRecordIter.h"
#include "host/FunctionListener.h"
#include "host/VexQueryCancel.h"
#include "vexrocproc/ROCOutputs.h"

#include <map>
#include <utility>

namespace ROCALG_920::calls {

namespace {

class CancelCallback final : public VexCommon_920::VexQueryCancel {
public:
    explicit CancelCallback(RunWatch& watch) : watch_(watch) {}
    bool IsCancelRequested() override { return watch_.cancelRequested(); }

private:
    RunWatch& watch_;
};

} // namespace

FacadeRun::FacadeRun(const AnalysisRequest& request, Plan plan, const std::vector<std::span<const double>>& columns,
                     RunWatch& watch)
    : plan_(std::move(plan))
{
    ROCSetting asked = setting(request);
    std::vector<std::span<const double>> used;
    for (const int column : columnOf_) {
        variables_.AddContinuous(request.nameOf(column));
        used.push_back(columns[static_cast<std::size_t>(column)]);
    }
    algorithm_ = std::make_unique<RocAlgorithm>(asked, variables_);
    build(std::move(used), watch);
}

/// The position that the column gets in the records.
int FacadeRun::use(int column)
{
    columnOf_.push_back(column);
    return static_cast<int>(columnOf_.size()) - 1;
}

ROCSetting FacadeRun::setting(const AnalysisRequest& request)
{
    ROCSetting setting = request.options();
    setting.setComparisonType(plan_.comparison);
    setting.setDistribution(request.distribution());
    setting.setDirection(request.directionOf(request.tests()[plan_.tests.front()]));
    setting.setStateVar(use(request.state()), request.positiveValue());
    std::map<int, int> positionOf;
    std::vector<int> tests;
    for (const std::size_t test : plan_.tests) {
        const int column = request.tests()[test];
        const auto [known, isNew] = positionOf.try_emplace(column);
        if (isNew)
            known->second = use(column);
        tests.push_back(known->second);
    }
    setting.setTestVars(tests);
    if (request.weight() != AnalysisRequest::none && !request.hasProbabilities()) // these are no numbers of cases
        setting.setFrequencyWeightVar(use(request.weight()));
    if (plan_.grouped && request.group() != AnalysisRequest::none)
        request.setGroup(setting, use(request.group()));
    return setting;
}

void FacadeRun::build(std::vector<std::span<const double>> columns, RunWatch& watch)
{
    VexCommon_920::ColumnRecordIter records(std::move(columns));
    CancelCallback cancel(watch);
    VexCommon_920::FunctionListener listener([&watch](VexCommon_920::ProgressReport& report) {
        watch.tell(report.ScaleMeasure("percentage"), report.DiscreteMeasure("records"));
    });
    algorithm_->SetCancelPtr(watch.isAsked() ? &cancel : nullptr);
    algorithm_->SetProgressListener(watch.listens() ? &listener : nullptr);
    statusCode_ = static_cast<int>(algorithm_->BuildModel(records).GetErrorCode());
    algorithm_->SetCancelPtr(nullptr);
    algorithm_->SetProgressListener(nullptr);
}

bool FacadeRun::ranOutOfMemory() const { return RunFailure::ranOutOfMemory(*algorithm_); }

std::span<ROCOutBase* const> FacadeRun::records() const { return algorithm_->GetOutputStats()->getROCBaseStats(); }

std::span<ROCComparisonOutStats* const> FacadeRun::comparisons() const
{
    return algorithm_->GetOutputStats()->getROCComparisonStats();
}

} // namespace ROCALG_920::calls
