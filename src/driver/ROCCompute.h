#pragma once

#include "driver/GroupSplit.h"
#include "driver/RunMonitor.h"
#include "driver/TestSpaces.h"
#include "host/MultiPassRecordIter.h"
#include "host/VexStatus.h"
#include "host/VexVarList.h"
#include "host/VexWarnings.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCOutputs.h"
#include "vexrocproc/ROCSetting.h"

#include <memory>
#include <vector>

namespace ROCALG_920 {

/// The analysis driver: checks the settings against the data, reads every record once, and turns the filled spaces
/// into result records.
///
/// Life: made and destroyed with its facade. Every run starts with a fresh status and fresh warnings; the records of
/// earlier runs stay alive, and only a run that completes publishes its own in a new result set.
/// Failure: a run that cannot go on ends with the first error's status. Exceptions of the host or of memory leave
/// build; the records made so far stay owned by the driver.
class ROCCompute {
public:
    ROCCompute(ROCSetting& setting, VexXML_920::VexVarList& varList);
    virtual ~ROCCompute();
    ROCCompute(const ROCCompute&) = delete;
    ROCCompute& operator=(const ROCCompute&) = delete;

    void SetProgressListener(VexCommon_920::ProgressListener* listener) { listener_ = listener; }
    void SetCancelPtr(VexCommon_920::VexQueryCancel* query) { cancelInfo_.SetCancelPtr(query); }

    /// One analysis run over the iterator's records.
    VexCommon_920::VexStatus& build(VexCommon_920::MultiPassRecordIter& iter);
    /// Warnings of the last run.
    [[nodiscard]] VexCommon_920::VexWarnings& getWarnings() { return warnings_; }
    /// Did the last run end because memory ran out?
    [[nodiscard]] bool ranOutOfMemory() const noexcept { return ranOutOfMemory_; }
    /// Result set of the last run that completed; null before.
    [[nodiscard]] ROCOutputs* getResult() const { return outputs_.get(); }

private:
    /// A step's outcome: noError, or the code that ends the run.
    using Code = int;

    Code run(VexCommon_920::MultiPassRecordIter& iter);
    [[nodiscard]] Code checkState() const;
    Code checkTestVars(std::vector<int>& usable) const;
    [[nodiscard]] Code checkComparison(int groupVar) const;
    int groupVarInEffect();
    Code defineGroups(VexCommon_920::MultiPassRecordIter& iter, int groupVar, GroupSplit& split);
    void warn(int code);

    std::vector<std::unique_ptr<ROCOutBase>> results_;
    std::vector<std::unique_ptr<ROCComparisonOutStats>> comparisons_;
    ROCSetting& setting_;
    VexXML_920::VexVarList& varList_;
    VexCommon_920::VexStatus status_;
    std::unique_ptr<ROCOutputs> outputs_;
    VexCommon_920::VexWarnings warnings_;
    bool ranOutOfMemory_ = false;
    VexMath_920::VexCancelInfo cancelInfo_{nullptr};
    VexCommon_920::ProgressListener* listener_ = nullptr;
};

} // namespace ROCALG_920
