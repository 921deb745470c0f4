#include "cli/options/NamedFiles.h"

#include "cli/options/Offer.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace vexroc {

namespace {

namespace fs = std::filesystem;

/// The same text for all names of a file, also of one that does not exist yet; none for a pipe or a device, which may
/// well be read and written at once.
std::optional<std::string> identityOf(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) == 0)
        return S_ISREG(status.st_mode)
            ? std::optional(std::to_string(status.st_dev) + ' ' + std::to_string(status.st_ino))
            : std::nullopt;
    std::error_code ignored;
    const fs::path place = fs::absolute(path, ignored);
    return (fs::weakly_canonical(place.parent_path(), ignored) / place.filename()).string();
}

struct NamedFile {
    std::string option; ///< as messages call it: "--output"
    std::string path;
    std::optional<std::string> identity;
};

/// What a command does with the file that an option names.
enum class FileUse { none, read, written, tables };

/// An option whose value stands as FILE names a file to write, unless it is one of those that read.
FileUse fileUseOf(const CLI::Option& option)
{
    constexpr std::array<std::string_view, 3> reading{"FILE", "sqlite", "config"};
    if (std::ranges::find(reading, nameOf(option)) != reading.end())
        return FileUse::read;
    if (option.get_type_name() == "FOLDER")
        return FileUse::tables;
    const bool namesFile = option.get_expected_max() > 0 && option.get_type_name().starts_with("FILE");
    return namesFile ? FileUse::written : FileUse::none;
}

/// The files that the options of one use name.
std::vector<NamedFile> filesOf(const CLI::App& app, FileUse use)
{
    std::vector<NamedFile> files;
    for (const CLI::Option* const option : app.get_options())
        if (fileUseOf(*option) == use)
            for (const std::string& path : option->results())
                files.push_back({option->get_name(), path, identityOf(path == "-" ? "/dev/stdin" : path)});
    return files;
}

std::vector<NamedFile> writtenBy(const CLI::App& command)
{
    const std::string standardOutput = "-"; // where --output goes anyway
    std::vector<NamedFile> files = filesOf(command, FileUse::written);
    const std::vector<NamedFile> folders = filesOf(command, FileUse::tables);
    for (const auto& [option, folder, identity] : folders)
        for (const std::string_view table : tableNames) {
            const std::string path = tableFile(folder, table);
            files.push_back({option, path, identityOf(path)});
        }
    std::erase_if(files, [&](const NamedFile& f) { return f.option == "--output" && f.path == standardOutput; });
    for (const auto& [option, path, identity] : files)
        if (path == standardOutput)
            throw usageError(option + " -: only --output goes to standard output; name a file (./- for one called -)");
    return files;
}

bool isSame(const NamedFile& one, const NamedFile& other) { return one.identity && one.identity == other.identity; }

void requireNotRead(const NamedFile& written, const std::vector<NamedFile>& files, const std::string& role)
{
    for (const NamedFile& file : files)
        if (isSame(written, file))
            throw usageError(written.option + " names " + role
                             + (file.path == "-" ? "on standard input" : visible(file.path)) + "; choose another file");
}

/// The file, or its folder where that is not there yet.
std::string firstToMake(const std::string& path)
{
    const fs::path folder = fs::path(path).parent_path();
    std::error_code ignored;
    return fs::exists(folder, ignored) ? path : folder.string();
}

} // namespace

std::vector<std::string> soundFilesToWrite(const CLI::App& command)
{
    const std::vector<NamedFile> written = writtenBy(command);
    const std::vector<NamedFile> inputs = filesOf(command, FileUse::read);
    const std::vector<NamedFile> configs = filesOf(*command.get_parent(), FileUse::read);
    for (std::size_t i = 0; i < written.size(); ++i) {
        requireNotRead(written[i], inputs, "the input ");
        requireNotRead(written[i], configs, "the --config file ");
        for (std::size_t j = 0; j < i; ++j)
            if (isSame(written[i], written[j]))
                throw usageError(written[j].option + " and " + written[i].option + " name the same file");
    }
    std::vector<std::string> paths;
    for (const NamedFile& file : written)
        paths.push_back(file.option == "--tables" ? firstToMake(file.path) : file.path);
    return paths;
}

std::string tableFile(const std::string& folder, std::string_view table)
{
    return (fs::path(folder) / table).string() + ".csv";
}

} // namespace vexroc
