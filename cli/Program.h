#pragma once

#include <chrono>
#include <iosfwd>
#include <span>
#include <string_view>

namespace vexroc {

/// What stands behind the stream for errors.
struct Terminal {
    bool isTerminal = false; ///< progress is shown there unless the options say otherwise
    bool colour = false;
    std::chrono::milliseconds progressAfter{500}; ///< a run that takes less shows no progress on its own
};

/// The program: `args` are the arguments behind its name. Results go to `out`, and only when they are complete; notes
/// and errors to `err`; `in` is read when a file is named "-". Returns the exit code, throws nothing.
int runProgram(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err,
               Terminal terminal = {}) noexcept;

} // namespace vexroc
