#include "cli/commands/Report.h"

#include "cli/options/NamedFiles.h"
#include "cli/system/OutputFiles.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace vexroc {

namespace {

void stageTables(const Report& report, OutputFiles& staged)
{
    if (report.folder.empty())
        return;
    staged.makeFolder(report.folder);
    for (const std::string_view name : tableNames) {
        std::error_code ignored;
        if (std::ranges::find(report.tables, name, &Report::Table::name) == report.tables.end()
            && std::filesystem::exists(tableFile(report.folder, name), ignored))
            throw outputError("--tables " + inQuotes(report.folder) + " holds " + visible(name)
                              + ".csv, a table that this answer does not have: remove it, or name another folder");
    }
    for (const auto& [name, csv] : report.tables) {
        if (std::ranges::find(tableNames, name) == tableNames.end())
            throw std::logic_error("a table has no name among those of files");
        staged.add(tableFile(report.folder, name), csv);
    }
}

} // namespace

void Report::stageFiles(OutputFiles& staged) const
{
    for (const auto& [path, bytes] : files)
        staged.add(path, bytes);
    stageTables(*this, staged);
}

} // namespace vexroc
