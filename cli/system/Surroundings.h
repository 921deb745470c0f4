#pragma once

#include "cli/system/Progress.h"

#include <cstddef>
#include <iosfwd>
#include <string_view>

namespace vexroc {

/// How many places a line of results has where nobody knows.
constexpr std::size_t usualLineWidth = 80;

/// What a subcommand may use of its surroundings.
struct Surroundings {
    std::istream& standardInput;
    std::string_view command; ///< what was called, as typed in a shell, visible text
    ProgressDisplay progress;
    bool quiet = false;                     ///< errors only
    std::size_t lineWidth = usualLineWidth; ///< of results on standard output
};

} // namespace vexroc
