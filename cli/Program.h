#pragma once

#include "cli/system/Surroundings.h"

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <span>
#include <string_view>

namespace vexroc {

/// What stands behind the streams.
struct Terminal {
    bool isTerminal = false; ///< that of errors: progress is shown there unless the options say otherwise
    bool colour = false;
    std::chrono::milliseconds progressAfter{500}; ///< a run that takes less shows no progress on its own
    std::size_t lineWidth = usualLineWidth;       ///< places in a line of results
};

/// The program: `args` are the arguments behind its name. Results go to `out`, and only when they are complete; notes
/// and errors to `err`; `in` is read when a file is named "-". Returns the exit code, throws nothing.
int runProgram(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err,
               Terminal terminal = {}) noexcept;

} // namespace vexroc
