#include "cli/sources/FileSource.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <istream>
#include <system_error>

namespace vexroc {

namespace {

Failure cannotRead(const std::string& name, int error)
{
    return inputError("cannot read " + name + ": " + std::generic_category().message(error));
}

class FileSource final : public ByteSource {
public:
    explicit FileSource(const std::string& path) : ByteSource(visible(path)), file_(std::fopen(path.c_str(), "rb"))
    {
        if (!file_)
            throw cannotRead(name(), errno);
        std::setvbuf(file_.get(), nullptr, _IONBF, 0); // the reader's blocks are the buffer
        struct stat status {};
        if (fstat(fileno(file_.get()), &status) == 0 && S_ISREG(status.st_mode))
            length_ = static_cast<double>(status.st_size);
    }

    std::size_t read(std::span<char> block) override
    {
        const std::size_t length = std::fread(block.data(), 1, block.size(), file_.get());
        if (std::ferror(file_.get()))
            throw cannotRead(name(), errno);
        read_ += static_cast<double>(length);
        return length;
    }
    /// Files may grow while they are read.
    [[nodiscard]] std::optional<double> shareRead() const noexcept override
    {
        return length_ > 0.0 ? std::optional(std::min(read_ / length_, 1.0)) : std::nullopt;
    }

private:
    struct CloseFile {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, CloseFile> file_;
    double length_ = 0.0; ///< in bytes; 0 where a pipe or a device does not tell
    double read_ = 0.0;   ///< bytes so far
};

class StreamSource final : public ByteSource {
public:
    explicit StreamSource(std::istream& stream) : ByteSource("standard input"), stream_(stream) {}

    std::size_t read(std::span<char> block) override
    {
        stream_.read(block.data(), static_cast<std::streamsize>(block.size()));
        if (stream_.bad())
            throw inputError("cannot read " + name());
        return static_cast<std::size_t>(stream_.gcount());
    }

private:
    std::istream& stream_;
};

} // namespace

std::unique_ptr<ByteSource> openSource(const std::string& file, std::istream& standardInput)
{
    if (file == "-")
        return std::make_unique<StreamSource>(standardInput);
    return std::make_unique<FileSource>(file);
}

} // namespace vexroc
