#pragma once

#include <stdexcept>
#include <string>

namespace vexroc {

/// What the program tells its caller when it ends.
enum ExitCode : int {
    exitDone = 0,
    exitNoResult = 1,    ///< the analysis itself failed
    exitUsage = 2,       ///< wrong use
    exitInput = 3,       ///< the data cannot be read or do not fit the question
    exitOutput = 4,      ///< the results cannot be written
    exitCancelled = 130, ///< by an interrupt: 128 and the number of the signal, as shells count
};

/// Ends a run with an exit code and a message for people. Thrown anywhere below runProgram, caught only there.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode exitCode, const std::string& message) : std::runtime_error(message), exitCode_(exitCode) {}
    [[nodiscard]] ExitCode exitCode() const noexcept { return exitCode_; }

private:
    ExitCode exitCode_;
};

inline Failure usageError(const std::string& message) { return {exitUsage, message}; }
inline Failure inputError(const std::string& message) { return {exitInput, message}; }
inline Failure analysisError(const std::string& message) { return {exitNoResult, message}; }
inline Failure cancelled() { return {exitCancelled, "cancelled; nothing was written"}; }
inline Failure outputError(const std::string& message) { return {exitOutput, message}; }

} // namespace vexroc
