#pragma once

#include <chrono>
#include <iosfwd>
#include <span>
#include <string_view>

namespace vexroc {

/// Whether and when the progress of long runs is shown on the stream for errors.
struct ProgressDisplay {
    bool shown = false; ///< for terminals
    std::chrono::milliseconds after{500};
};

/// The program: `args` are the arguments behind its name. Results go to `out`, and only when they are complete; notes
/// and errors to `err`; `in` is read when a file is named "-". Returns the exit code, throws nothing.
int runProgram(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err,
               ProgressDisplay progress = {}) noexcept;

} // namespace vexroc
