#pragma once

#include "cli/system/Progress.h"
#include "cli/words/CallLine.h"

#include <cstddef>
#include <iosfwd>

namespace vexroc {

/// How many places a line of results has where nobody knows.
constexpr std::size_t usualLineWidth = 80;

/// What a subcommand may use of its surroundings.
struct Surroundings {
    std::istream& standardInput;
    CallLine call; ///< of the program
    ProgressDisplay progress;
    bool quiet = false;                     ///< errors only
    std::size_t lineWidth = usualLineWidth; ///< of results on standard output
};

} // namespace vexroc
