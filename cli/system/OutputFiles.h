#pragma once

#include "cli/system/OutputFile.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace vexroc {

/// Files that are all prepared before the first of them is put in its place. Failure: throws an output error that names
/// the place; the end removes what was not committed.
class OutputFiles {
public:
    OutputFiles() = default;
    ~OutputFiles();
    OutputFiles(const OutputFiles&) = delete;
    OutputFiles& operator=(const OutputFiles&) = delete;

    /// A folder for files; may be there already.
    void makeFolder(const std::string& path);
    void add(const std::string& path, std::string text);
    void commit();

private:
    std::deque<std::string> texts_; ///< a file may refer to its text until it is in place
    std::vector<std::unique_ptr<OutputFile>> files_;
    std::string madeFolder_; ///< to be removed unless files are committed; empty for none
};

} // namespace vexroc
