#include "cli/output/InferenceDocuments.h"
#include "cli/output/Sentences.h"
#include "cli/output/inferenceWords.h"
#include "cli/output/operatingRows.h"
#include "cli/output/resultTables.h"

namespace vexroc {

namespace {

Table pointTable(const Analysis& analysis, const CurveOptions& how, const Answers<OperatingPoints>& found,
                 RowDetail detail)
{
    TableMaker table(
        analysis.question,
        perTest(analysis.question, joined({std::span(&cutOffColumn, 1), rowColumns(analysis, how, detail)})));
    std::vector<Table::Value> cells;
    for (const auto& [value, test, points] : found) {
        table.setValue(value);
        for (std::size_t row = 0; row < points.size(); ++row) {
            cells = {test->area.test, groupOf(test->area),
                     CutOffCell{points.cutOffs[row], points.readingOf(*test, row)}};
            addRowCells(*test, how, points, row, detail, cells);
            table.add(cells);
        }
    }
    return table.take();
}

} // namespace

Document operatingPointsDocument(const Analysis& analysis, const CurveOptions& how, bool isNamed,
                                 const Answers<OperatingPoints>& found)
{
    Document document =
        documentOn(analysis, "points", isNamed ? "Operating points" : "Operating points at every cut-off of the curve");
    addRowMethods(analysis, how, document);
    document.parts.push_back({"points", "", pointTable(analysis, how, found, RowDetail::all), !isNamed});
    if (!isNamed)
        return document;
    document.parts.push_back({"", "", pointTable(analysis, how, found, RowDetail::counts)});
    for (const auto& curve : found)
        for (std::size_t row = 0; row < curve.answer.size(); ++row) {
            const std::string title = blockTitle(analysis.question, curve.value, *curve.test, curve.answer, row);
            document.parts.push_back(blockOf(title, curve.answer, row));
            document.sentences.push_back(sentenceOn(analysis.question, how, curve, row));
        }
    return document;
}

} // namespace vexroc
