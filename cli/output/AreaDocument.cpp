#include "cli/output/Documents.h"
#include "cli/output/comparisonRows.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultColumns.h"

namespace vexroc {

namespace {

constexpr std::array caseColumns{testColumn, stateColumns[0], stateColumns[1],
                                 TableColumn{"left_out", "left out", CellRole::count}};

} // namespace

Document areaDocument(const Question& question, const Results& results)
{
    Document document{.command = "auc",
                      .heading = {"Area under the ROC curve", questionHeading(question, *results.labels),
                                  standardErrorHeading(question)},
                      .question = questionFacts(question, *results.labels)};
    addInference(document.question, standardErrorWord(question), question);
    Table table(joined({caseColumns, areaColumns}));
    for (const TestResult& result : results.tests) {
        const Area& area = result.area;
        Row row(std::array<std::string_view, 1>{area.test});
        row.add(std::array{double(area.positive), double(area.negative), double(area.leftOut)});
        table.addRow(row.add(areaNumbers(area)).values());
    }
    document.parts.push_back({"areas", "", std::move(table)});
    return document;
}

} // namespace vexroc
