#pragma once

#include "cli/study/Results.h"

#include <span>
#include <string>

namespace vexroc {

// What the component answers in codes and positions, said in words and names.

/// A warning of a run. `tests` are the names of the test variables that it is about.
RunMessage warningInWords(int code, const std::string& name, std::span<const std::string> tests);

/// The status of a run that came to no result, with what to do about it.
RunMessage failureInWords(int code);

} // namespace vexroc
