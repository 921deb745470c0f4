#include "cli/system/OutputFiles.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace vexroc {

OutputFiles::~OutputFiles()
{
    files_.clear(); // before their folder
    std::error_code ignored;
    if (!madeFolder_.empty())
        std::filesystem::remove(madeFolder_, ignored);
}

void OutputFiles::makeFolder(const std::string& path)
{
    std::error_code error;
    if (std::filesystem::create_directory(path, error))
        madeFolder_ = path;
    if (error)
        throw outputError("cannot make the folder " + visible(path) + ": " + error.message());
}

void OutputFiles::add(const std::string& path, std::string text)
{
    texts_.push_back(std::move(text));
    files_.push_back(std::make_unique<OutputFile>(path, texts_.back()));
}

void OutputFiles::commit()
{
    for (const auto& file : files_)
        file->commit();
    madeFolder_.clear();
}

} // namespace vexroc
