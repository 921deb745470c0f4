#pragma once

#include "cli/study/Results.h"

namespace vexroc {

/// The status of a run that came to no result, with what to do about it.
RunMessage statusInWords(int code);

} // namespace vexroc
