#pragma once

#include "host/CancelFlag.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vexroc {

/// A new folder of the program's own among the temporary files; gone, with what is in it, at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
};

/// Where PATH has a program of that name.
std::optional<std::string> findProgram(const std::string& name);

/// How a child process ended.
struct ChildEnd {
    bool inTime;      ///< false: it was ended when its time was over, or by the cancel
    int status;       ///< as waitpid gives it
    std::string said; ///< what it wrote, standard output and error together
};

/// Runs a program, without a shell, in a folder; `arguments` begin with its name. An interrupt of this program does not
/// reach the child: the flag ends it. Throws an output error when it cannot be started.
ChildEnd runChild(const std::string& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& folder, std::chrono::milliseconds limit,
                  VexCommon_920::CancelFlag& cancel);

} // namespace vexroc
