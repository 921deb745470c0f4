#include "cli/system/ChildProcess.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>
#include <thread>

namespace vexroc {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr const char* messageFile = "messages";

std::string messageOf(int error) { return std::generic_category().message(error); }

/// What the child does between its start and its program.
class SpawnPlan {
public:
    explicit SpawnPlan(const fs::path& folder)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, messageFile, O_WRONLY | O_CREAT | O_APPEND, 0600);
        posix_spawn_file_actions_adddup2(&actions_, STDOUT_FILENO, STDERR_FILENO);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP); // its own group: no interrupt from the terminal
    }
    ~SpawnPlan()
    {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    pid_t start(const std::string& program, std::vector<std::string> arguments) const
    {
        std::vector<char*> pointers;
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        pid_t child = 0;
        const int error = posix_spawn(&child, program.c_str(), &actions_, &attributes_, pointers.data(), environ);
        if (error != 0)
            throw outputError("cannot start " + visible(program) + ": " + messageOf(error));
        return child;
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

std::string contentOf(const fs::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::string name = (fs::temp_directory_path() / "vexroc-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw outputError("cannot make a temporary folder " + visible(name) + ": " + messageOf(errno));
    path_ = name;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::optional<std::string> findProgram(const std::string& name)
{
    const char* const places = std::getenv("PATH");
    std::istringstream folders(places ? places : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path candidate = fs::path(folder) / name;
        std::error_code ignored;
        if (candidate.is_absolute() && fs::is_regular_file(candidate, ignored) && access(candidate.c_str(), X_OK) == 0)
            return candidate.string();
    }
    return std::nullopt;
}

ChildEnd runChild(const std::string& program, const std::vector<std::string>& arguments, const fs::path& folder,
                  std::chrono::milliseconds limit, VexCommon_920::CancelFlag& cancel)
{
    const pid_t child = SpawnPlan(folder).start(program, arguments);
    const Clock::time_point end = Clock::now() + limit;
    ChildEnd result{.inTime = true, .status = 0, .said = {}};
    while (waitpid(child, &result.status, WNOHANG) == 0) {
        if (Clock::now() >= end || cancel.IsCancelRequested()) {
            result.inTime = false;
            kill(-child, SIGKILL);
            waitpid(child, &result.status, 0);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    result.said = contentOf(folder / messageFile);
    return result;
}

} // namespace vexroc
