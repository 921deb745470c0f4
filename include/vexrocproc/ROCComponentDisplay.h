#pragma once

#include "host/VexStatus.h"
#include "vexrocproc/ROCConst.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <string>
#include <vector>

/// Enumeration values and statuses as text, written line by line through the host's line display
/// (host/VexDisplay.h) to its current stream.
namespace ROCComponentDisplay {
#pragma GCC visibility push(default)

// One line: the label, " = " and the meaning of the value; "unrecognized" for a value outside the enumeration.

void DisplayC(const std::string& label, ROCConst_920::Classification value);
void DisplayC(const std::string& label, ROCConst_920::Distribution value);
void DisplayC(const std::string& label, ROCConst_920::Direction value);
void DisplayC(const std::string& label, ROCConst_920::PRInterpolation value);
void DisplayC(const std::string& label, ROCConst_920::ComparisonType value);
void DisplayC(const std::string& label, ROCConst_920::GroupType value);
void DisplayC(const std::string& label, ROCConst_920::Operation value);

/// Four lines: the name, whether the status is an error, its code and the name of the code.
void DisplayStatus(const std::string& name, const VexCommon_920::VexStatus& status);
/// The number of statuses, then five lines for each: an empty one, its index, and the last three of DisplayStatus.
void DisplayVStatus(const std::string& name, const std::vector<VexCommon_920::VexStatus>& statuses);

#pragma GCC visibility pop
} // namespace ROCComponentDisplay
