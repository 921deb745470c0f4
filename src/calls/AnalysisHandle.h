#pragma once

#include "calls/AnalysisRequest.h"
#include "calls/AnalysisRun.h"

#include <memory>

/// What the opaque handle of analysis.h points at.
struct vexroc_analysis {
    ROCALG_920::calls::AnalysisRequest request;
    ROCALG_920::calls::RunCallbacks callbacks;
    std::unique_ptr<ROCALG_920::calls::AnalysisRun> run; ///< the last; null before, and when it was refused
    bool running = false;
    bool refused = false; ///< the last run had settings or memory that would not do
};
