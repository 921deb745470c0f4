#include "vexrocproc/ROCOutputs.h"

#include <utility>

namespace ROCALG_920 {

ROCOutputs::ROCOutputs(VexXML_920::VexVarList& varList, std::vector<ROCOutBase*> baseStats,
                       std::vector<ROCComparisonOutStats*> comparisonStats)
    : baseStats_(std::move(baseStats)), comparisonStats_(std::move(comparisonStats)), varList_(varList)
{
}

ROCOutputs::~ROCOutputs() = default;

} // namespace ROCALG_920
