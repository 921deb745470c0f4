#include "vexrocproc/RocAlgorithm.h"

#include "driver/ROCCompute.h"
#include "numeric/DefaultArithmetic.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <utility>

namespace ROCALG_920 {

using VexCommon_920::VexStatus;
using VexCommon_920::VexWarnings;

RocAlgorithm::RocAlgorithm(ROCSetting& setting, VexXML_920::VexVarList& varList)
    : setting_(setting), compute_(std::make_unique<ROCCompute>(setting_, varList)), cancelInfo_(nullptr)
{
}

RocAlgorithm::~RocAlgorithm() = default;

void RocAlgorithm::SetProgressListener(VexCommon_920::ProgressListener* listener)
{
    listener_ = listener;
    compute_->SetProgressListener(listener);
}

void RocAlgorithm::SetCancelPtr(VexCommon_920::VexQueryCancel* query)
{
    cancelInfo_.SetCancelPtr(query);
    compute_->SetCancelPtr(query);
}

VexStatus RocAlgorithm::BuildModel(VexCommon_920::MultiPassRecordIter& iter)
{
    const DefaultArithmetic arithmetic;
    try {
        warnings_ = VexWarnings();
        status_ = compute_->build(iter);
        warnings_ = std::move(compute_->getWarnings()); // cannot fail: the driver's last result set is already gone
        modelBuilt_ = status_.IsOK();
        if (modelBuilt_)
            outputs_ = compute_->getResult();
    } catch (...) {
        status_ = VexStatus(statusCode::unexpected, false);
    }
    return status_;
}

void RocAlgorithm::Display(std::ostream& os) const
{
    if (const ROCOutputs* const outputs = compute_->getResult())
        outputs->Display(os);
}

} // namespace ROCALG_920
