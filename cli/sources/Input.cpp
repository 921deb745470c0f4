#include "cli/sources/Input.h"

#include "cli/sources/DecodedSource.h"
#include "cli/sources/FileSource.h"
#include "cli/sources/PackedSource.h"
#include "cli/sources/PostgresReader.h"
#include "cli/sources/SqliteReader.h"
#include "cli/sources/WatchedSource.h"
#include "cli/words/VisibleText.h"

namespace vexroc {

std::string Input::name() const
{
    switch (kind) {
    case Kind::delimited: return place == "-" ? "standard input" : visible(place);
    case Kind::sqlite: return visible(place) + (query.empty() ? ", table " + visible(table) : "");
    case Kind::postgres: break;
    }
    return "a PostgreSQL database";
}

void readInput(const Input& input, const Surroundings& surroundings, RowSink& sink)
{
    if (input.kind == Input::Kind::postgres)
        return readPostgres(input.place, input.query, surroundings, sink);
    if (input.kind == Input::Kind::sqlite)
        return input.table.empty() ? readSqliteQuery(input.place, input.query, surroundings.progress, sink)
                                   : readSqliteTable(input.place, input.table, surroundings.progress, sink);
    const std::unique_ptr<ByteSource> text =
        decoded(unpacked(openSource(input.place, surroundings.standardInput)), input.form.encoding);
    WatchedSource watched(*text, surroundings.progress, sink);
    readDelimited(watched, input.form, sink, surroundings.call);
}

DataTable readTable(const Input& input, const Surroundings& surroundings, std::span<const ColumnRequest> requests,
                    OtherColumns others)
{
    TableBuilder builder(requests, others, input.missingWords);
    readInput(input, surroundings, builder);
    return builder.finish();
}

} // namespace vexroc
