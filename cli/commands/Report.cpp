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

void Report::stageTables(OutputFiles& files) const
{
    if (folder.empty())
        return;
    files.makeFolder(folder);
    for (const std::string_view name : tableNames) {
        std::error_code ignored;
        if (std::ranges::find(tables, name, &Table::name) == tables.end()
            && std::filesystem::exists(tableFile(folder, name), ignored))
            throw outputError("--tables " + inQuotes(folder) + " holds " + visible(name)
                              + ".csv, a table that this answer does not have: remove it, or name another folder");
    }
    for (const auto& [name, csv] : tables) {
        if (std::ranges::find(tableNames, name) == tableNames.end())
            throw std::logic_error("a table has no name among those of files");
        files.add(tableFile(folder, name), csv);
    }
}

} // namespace vexroc
