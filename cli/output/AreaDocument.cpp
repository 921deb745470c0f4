#include "cli/output/Documents.h"
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
                                  standardErrorHeading(question.biNegative, question.level)},
                      .question = questionFacts(question, *results.labels)};
    addInference(document.question, standardErrorWord(question.biNegative), question.level);
    Table table(joined({caseColumns, areaColumns}));
    for (const auto& [area, roc, precisionRecall, best] : results.tests)
        table.addRow({area.test, double(area.positive), double(area.negative), double(area.leftOut), area.area,
                      area.stdError, area.significance, area.lower, area.upper});
    document.parts.push_back({"areas", "", std::move(table)});
    return document;
}

} // namespace vexroc
