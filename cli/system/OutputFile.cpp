#include "cli/system/OutputFile.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace vexroc {

namespace {

namespace fs = std::filesystem;

Failure cannotWrite(const std::string& path, const std::error_code& error)
{
    return outputError("cannot write " + visible(path) + ": " + error.message());
}

Failure cannotWrite(const std::string& path, int error) { return cannotWrite(path, {error, std::generic_category()}); }

bool exists(const std::string& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored);
}

bool isSpecial(const std::string& path)
{
    std::error_code ignored;
    return exists(path) && !fs::is_regular_file(path, ignored);
}

class Descriptor {
public:
    Descriptor(const std::string& path, int flags, const std::string& place)
        : place_(place), number_(open(path.c_str(), flags | O_WRONLY | O_CLOEXEC, 0666))
    {
        require(number_ >= 0);
    }
    ~Descriptor()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    void write(std::string_view text)
    {
        while (!text.empty()) {
            const ssize_t length = ::write(number_, text.data(), text.size());
            if (length < 0 && errno == EINTR)
                continue;
            require(length >= 0);
            text.remove_prefix(static_cast<std::size_t>(length));
        }
    }
    /// Permissions like those of an existing file; best effort, as they may be another user's.
    void takePermissionsOf(const std::string& path)
    {
        struct stat status {};
        if (stat(path.c_str(), &status) == 0)
            static_cast<void>(fchmod(number_, status.st_mode & 07777));
    }
    /// On the disk, so that the renamed file is complete also after a power failure.
    void finish()
    {
        require(fsync(number_) == 0 || errno == EINVAL || errno == EROFS);
        require(::close(std::exchange(number_, -1)) == 0);
    }

private:
    void require(bool success) const
    {
        if (!success)
            throw cannotWrite(place_, errno);
    }

    const std::string& place_;
    int number_;
};

std::string targetOf(const std::string& path)
{
    std::error_code notThere;
    const fs::path target = fs::canonical(path, notThere);
    return notThere ? path : target.string();
}

} // namespace

OutputFile::OutputFile(const std::string& path, std::string_view text) : place_(targetOf(path)), text_(text)
{
    if (isSpecial(place_))
        return;
    const std::string beside = place_ + ".vexroc-" + std::to_string(getpid());
    Descriptor file(beside, O_CREAT | O_EXCL, place_);
    beside_ = beside;
    try {
        file.write(text_);
        file.takePermissionsOf(place_);
        file.finish();
    } catch (...) {
        unlink(beside_.c_str());
        throw;
    }
}

OutputFile::~OutputFile()
{
    if (!beside_.empty())
        unlink(beside_.c_str());
}

void OutputFile::commit()
{
    if (beside_.empty()) {
        Descriptor(place_, 0, place_).write(text_);
        return;
    }
    if (std::rename(beside_.c_str(), place_.c_str()) != 0)
        throw cannotWrite(place_, errno);
    beside_.clear();
}

void OutputFile::requirePlace(const std::string& path)
{
    const std::string place = targetOf(path);
    std::error_code ignored;
    if (fs::is_directory(place, ignored))
        throw cannotWrite(path, EISDIR);
    const std::string folder = fs::path(place).has_parent_path() ? fs::path(place).parent_path().string() : ".";
    const std::string& written = isSpecial(place) ? place : folder;
    if (access(written.c_str(), W_OK) != 0)
        throw cannotWrite(path, errno);
    if (!isSpecial(place) && !fs::is_directory(folder, ignored))
        throw cannotWrite(path, ENOTDIR);
}

} // namespace vexroc
