#pragma once

#include "cli/study/Remarks.h"

#include <string>
#include <vector>

namespace vexroc {
class OutputFiles;
}

namespace vexroc {

/// What a command has to say, complete before a byte of it is written.
struct Report {
    std::string text;      ///< for standard output, or the file
    std::string file = {}; ///< empty for standard output
    struct Table {
        std::string name; ///< without ending
        std::string csv;
    };
    std::string folder = {}; ///< of the tables; empty where none is asked for
    std::vector<Table> tables = {};
    struct File {
        std::string path;
        std::string bytes;
    };
    std::vector<File> files = {}; ///< pictures
    // For standard error.
    std::vector<Remark> notes = {};
    std::vector<Remark> cautions = {};
    std::string error = {}; ///< why the analysis came to no result; the program then ends with exitNoResult

    /// The files, and the tables as files of their folder. Throws an output error where that holds tables of another
    /// answer.
    void stageFiles(OutputFiles& staged) const;
};

} // namespace vexroc
