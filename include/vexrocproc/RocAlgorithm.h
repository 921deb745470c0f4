#pragma once

#include "host/MultiPassRecordIter.h"
#include "host/ProgressListener.h"
#include "host/VexCancelInfo.h"
#include "host/VexStatus.h"
#include "host/VexVarList.h"
#include "host/VexWarnings.h"
#include "vexrocproc/ROCOutputs.h"
#include "vexrocproc/ROCSetting.h"

#include <iosfwd>
#include <memory>

namespace ROCALG_920 {

class ROCCompute;

/// Runs a full ROC analysis over a host's records and keeps its results.
///
/// Use: construct with the settings (copied) and the host's variables; install a progress listener and a cancel query
/// if wanted; call BuildModel; read status, warnings and results, or have them printed. BuildModel may be called
/// again: status and warnings then are those of the new run.
/// Lifetime: the variable list, the listener and the cancel query are not owned and must outlive the facade. A record
/// reached through GetOutputStats() lives until the facade is destroyed; the result set itself until the next run
/// that completes.
/// Failure: BuildModel never throws; what the host or memory throws ends the run with status 430001.
/// Threads: everything runs on the calling thread; one facade is used by one thread at a time.
/// Arithmetic: BuildModel, and with it what it calls in the host, runs in the default floating-point environment; the
/// caller's own is back when it returns.
class [[gnu::visibility("default")]] RocAlgorithm
{
public:
    RocAlgorithm(ROCSetting & setting, VexXML_920::VexVarList & varList);
    virtual ~RocAlgorithm();
    RocAlgorithm(const RocAlgorithm&) = delete;
    RocAlgorithm& operator=(const RocAlgorithm&) = delete;

    /// Null removes the listener: progress is then not announced.
    void SetProgressListener(VexCommon_920::ProgressListener * listener);
    /// Null removes the query: the run then cannot be cancelled.
    void SetCancelPtr(VexCommon_920::VexQueryCancel * query);

    /// Runs the analysis; the iterator stands at the first record or is exhausted, and is read in passes. The status is
    /// success, code 1 after a cancel, or an error (see ROCStatusCodes.h).
    VexCommon_920::VexStatus BuildModel(VexCommon_920::MultiPassRecordIter & iter);

    /// Status of the last run; success before the first.
    [[nodiscard]] VexCommon_920::VexStatus GetStatus() const { return status_; }
    /// Did the last run end well? A run that an exception ended leaves the answer as it was.
    [[nodiscard]] bool IsModelBuilt() const { return modelBuilt_; }
    /// Results of the last run that ended well; null before. Owned by the facade.
    [[nodiscard]] ROCOutputs* GetOutputStats() const { return outputs_; }
    /// Warnings of the last run, also when an error ended it; none when an exception did.
    [[nodiscard]] const VexCommon_920::VexWarnings& GetWarningMessages() const { return warnings_; }
    /// Prints the results of the last run that ended well; nothing before.
    void Display(std::ostream & os) const;

private:
    friend class RunFailure;

    ROCSetting setting_;
    bool modelBuilt_ = false;
    ROCOutputs* outputs_ = nullptr;
    std::unique_ptr<ROCCompute> compute_;
    VexMath_920::VexCancelInfo cancelInfo_;
    VexCommon_920::ProgressListener* listener_ = nullptr;
    VexCommon_920::VexStatus status_;
    VexCommon_920::VexWarnings warnings_;
};

} // namespace ROCALG_920
