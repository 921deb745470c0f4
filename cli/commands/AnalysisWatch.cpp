#include "cli/commands/AnalysisWatch.h"

#include "cli/words/Failure.h"

namespace vexroc {

void AnalysisWatch::requireNotCancelled()
{
    if (cancel_.IsCancelRequested())
        throw cancelled();
}

} // namespace vexroc
