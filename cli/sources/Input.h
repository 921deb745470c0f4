#pragma once

#include "cli/input/DelimitedReader.h"
#include "cli/input/TableBuilder.h"
#include "cli/study/DataTable.h"
#include "cli/study/RowSink.h"
#include "cli/system/Surroundings.h"

#include <memory>
#include <span>
#include <string>

namespace vexroc {

/// Where the data are.
struct Input {
    enum class Kind { delimited, sqlite, postgres };
    Kind kind = Kind::delimited;
    std::string place; ///< file, "-" for standard input; database file; connection
    TextForm form;     ///< of delimited text
    std::shared_ptr<const MissingWords> missingWords = std::make_shared<MissingWords>();
    std::string table;
    std::string query; ///< empty with a table

    /// Visible text; a connection, which may tell more than readers should know, is not in it.
    [[nodiscard]] std::string name() const;
};

/// Reads all rows into the sink and tells the progress of it. Throws an input error that names the input and the place.
void readInput(const Input& input, const Surroundings& surroundings, RowSink& sink);
/// Reads the requested columns.
DataTable readTable(const Input& input, const Surroundings& surroundings, std::span<const ColumnRequest> requests,
                    OtherColumns others = OtherColumns::skipped);

} // namespace vexroc
