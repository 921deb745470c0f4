// How well does a blood marker tell the sick from the healthy?

#include "host/ColumnRecordIter.h"
#include "host/VexVarList.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/RocAlgorithm.h"

#include <cstdio>
#include <vector>

int main()
{
    // The data: one column per variable, one value per case.
    const std::vector<double> sick{1, 1, 1, 1, 1, 0, 0, 0, 0, 0};
    const std::vector<double> marker{7.1, 6.4, 8.0, 5.2, 6.9, 4.8, 5.9, 5.2, 3.3, 4.1};
    VexCommon_920::ColumnRecordIter records({sick, marker});

    // What the columns are, in the same order.
    VexXML_920::VexVarList variables;
    const int state = variables.AddTwoValued("sick");
    const int test = variables.AddContinuous("marker");

    // What is asked: a case is positive where `sick` is 1.
    ROCALG_920::ROCSetting setting;
    setting.setStateVar(state, 1.0);
    setting.setTestVars({test});

    ROCALG_920::RocAlgorithm analysis(setting, variables);
    const VexCommon_920::VexStatus status = analysis.BuildModel(records);
    if (status.IsError()) {
        std::fprintf(stderr, "the analysis ended with code %ld\n", status.GetErrorCode());
        return 1;
    }
    for (const ROCALG_920::ROCOutBase* result : analysis.GetOutputStats()->getROCBaseStats())
        std::printf("%s: area %.3f, standard error %.3f, 95 %% interval %.3f to %.3f\n",
                    variables.GetVarAt(result->getTestVarInd())->GetName().c_str(), result->getArea(),
                    result->getStdError(), result->getCILower(), result->getCIUpper());
    return 0;
}
