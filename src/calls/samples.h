#pragma once

#include "calls/SummaryHandle.h"
#include "calls/guard.h"

#include <string>

/// What calls ask of a summary before they compute.
namespace ROCALG_920::calls {

/// Throws InvalidArgument where cases have probability weights, with the name of what is asked for.
inline void requireUnweighted(const vexroc_summary* summary, const char* what)
{
    if (required(summary, "summary").sample().isWeighted())
        throw InvalidArgument(std::string("summary: with probability weights ") + what + " is not defined");
}

/// The sample of a summary whose cases all count once.
inline const Summary& unweighted(const vexroc_summary* summary, const char* what)
{
    requireUnweighted(summary, what);
    return summary->sample().counts;
}

inline void requireBothStates(const Summary& sample)
{
    if (!sample.counts().bothStates())
        throw InvalidArgument(std::string("summary: there is no ")
                              + (sample.counts().positives == 0 ? "positive" : "negative") + " case");
}

} // namespace ROCALG_920::calls
