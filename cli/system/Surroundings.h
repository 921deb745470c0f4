#pragma once

#include "cli/system/Progress.h"
#include "cli/words/CallLine.h"

#include <iosfwd>

namespace vexroc {

/// What a subcommand may use of its surroundings.
struct Surroundings {
    std::istream& standardInput;
    CallLine call; ///< of the program
    ProgressDisplay progress;
    bool quiet = false; ///< errors only
};

} // namespace vexroc
