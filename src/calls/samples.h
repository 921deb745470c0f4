#pragma once

#include "calls/SummaryHandle.h"
#include "calls/guard.h"

#include <string>

/// What calls ask of a summary before they compute.
namespace ROCALG_920::calls {

/// The sample of a summary whose cases all count once; throws InvalidArgument with the name of what is asked for where
/// they have probability weights.
inline const Summary& unweighted(const vexroc_summary* summary, const char* what)
{
    const WeightedSummary& sample = required(summary, "summary").sample();
    if (sample.isWeighted())
        throw InvalidArgument(std::string("summary: with probability weights ") + what + " is not defined");
    return sample.counts;
}

inline void requireBothStates(const Summary& sample)
{
    if (!sample.counts().bothStates())
        throw InvalidArgument(std::string("summary: there is no ")
                              + (sample.counts().positives == 0 ? "positive" : "negative") + " case");
}

} // namespace ROCALG_920::calls
