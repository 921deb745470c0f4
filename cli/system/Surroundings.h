#pragma once

#include "cli/system/Progress.h"

#include <iosfwd>
#include <string_view>

namespace vexroc {

/// What a subcommand may use of its surroundings.
struct Surroundings {
    std::istream& standardInput;
    std::string_view command; ///< what was called, as typed in a shell, visible text
    ProgressDisplay progress;
    bool quiet = false; ///< errors only
};

} // namespace vexroc
