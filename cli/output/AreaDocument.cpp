#include "cli/output/Documents.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"
#include "cli/study/Remarks.h"
#include "cli/words/VisibleText.h"

namespace vexroc {

Document areaDocument(const Question& question, const Results& results)
{
    Document document{.command = "auc",
                      .heading = {"Area under the ROC curve", questionHeading(question),
                                  standardErrorHeading(question.biNegative, question.level)},
                      .question = questionFacts(question)};
    addInference(document.question, standardErrorWord(question.biNegative), question.level);
    Table table(joined({std::span(&testColumn, 1), areaColumns(false)}));
    for (const auto& [area, roc, precisionRecall, best] : results.tests) {
        std::vector<Table::Value> row{area.test};
        addAreaCells(area, false, row);
        table.addRow(row);
        addAreaNotes(visible(area.test), area, document.notes);
        addAreaCautions(visible(area.test), area, question.largerIsPositive, document.notes);
        if (question.biNegative)
            addBiNegativeNotes(visible(area.test), area, document.notes);
    }
    document.parts.push_back({"areas", "", std::move(table)});
    return document;
}

} // namespace vexroc
