#pragma once

#include "host/ProgressReport.h"

namespace VexCommon_920 {

/// The host's progress sink. It is called on the thread that runs the analysis and must return promptly.
class [[gnu::visibility("default")]] ProgressListener
{
public:
    virtual ~ProgressListener();

    /// Tells of progress; the report is valid during the call only. The answer is not used.
    virtual int Notify(ProgressReport & report) = 0;
};

} // namespace VexCommon_920
