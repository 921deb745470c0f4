#pragma once

#include <string>
#include <string_view>

namespace vexroc {

/// A file that appears complete or not at all: written beside its place, then renamed over it.
///
/// Life: the constructor writes the text beside the place, commit moves it there, the end removes what was not
/// committed. A link is followed; an existing file keeps its permissions. A place that is no regular file (a pipe, a
/// device) cannot be renamed over: commit writes into it; the text must live until then.
/// Failure: throws an output error that names the place.
class OutputFile {
public:
    OutputFile(const std::string& path, std::string_view text);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void commit();

    /// Throws where a file at that path certainly cannot be written: to be asked before a long run.
    static void requirePlace(const std::string& path);

private:
    std::string place_;
    std::string_view text_;
    std::string beside_; ///< empty when there is nothing to rename or remove
};

} // namespace vexroc
