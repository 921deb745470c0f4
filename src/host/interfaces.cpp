// Destructors of the interfaces. Defined out of line, they give each interface one vtable and one type description,
// shared by all libraries: a dynamic_cast of a host's object works in the component.

#include "host/IVexVariable.h"
#include "host/MultiPassRecordIter.h"
#include "host/ProgressListener.h"
#include "host/ProgressReport.h"
#include "host/RecordIterator.h"
#include "host/VexQueryCancel.h"
#include "host/VexValueLabels.h"

namespace VexCommon_920 {

RecordIterator::~RecordIterator() = default;
MultiPassRecordIter::~MultiPassRecordIter() = default;
VexQueryCancel::~VexQueryCancel() = default;
ProgressReport::~ProgressReport() = default;
ProgressListener::~ProgressListener() = default;

} // namespace VexCommon_920

namespace VexXML_920 {

VexValueLabels::~VexValueLabels() = default;
IVexVariable::~IVexVariable() = default;

} // namespace VexXML_920
