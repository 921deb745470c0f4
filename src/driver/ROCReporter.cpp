#include "driver/ROCReporter.h"

#include "host/VexMV.h"

namespace ROCALG_920 {

int ROCReporter::DiscreteMeasure(const std::string& name) { return name == "records" ? nRecords_ : -1; }

double ROCReporter::ScaleMeasure(const std::string& name)
{
    return name == "percentage" ? percentage_ : VexCommon_920::VexMV::Missing();
}

} // namespace ROCALG_920
