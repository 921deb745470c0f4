#include "cli/output/Documents.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"

namespace vexroc {

Document areaDocument(const Question& question, const Results& results)
{
    Document document{.command = "auc",
                      .heading = {"Area under the ROC curve", questionHeading(question, *results.labels),
                                  standardErrorHeading(question)},
                      .question = questionFacts(question, *results.labels)};
    addInference(document.question, standardErrorWord(question), question);
    Table table(joined({std::span(&testColumn, 1), areaColumns(false)}));
    for (const TestResult& test : results.tests) {
        std::vector<Table::Value> row{test.area.test};
        addAreaCells(test.area, false, row);
        table.addRow(row);
    }
    document.parts.push_back({"areas", "", std::move(table)});
    return document;
}

} // namespace vexroc
