#include "cli/output/Documents.h"
#include "cli/output/Sentences.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"

namespace vexroc {

Document areaDocument(const Question& question, const Results& results)
{
    AreaMethods methods;
    methods.add(results);
    Document document{.command = "auc",
                      .heading = {"Area under the ROC curve", questionHeading(question, *results.labels),
                                  areaHeading(question, methods)},
                      .question = questionFacts(question, *results.labels)};
    addAreaFacts(document.question, question);
    Table table(joined({std::span(&testColumn, 1), areaColumns(question, methods)}));
    for (const TestResult& test : results.tests) {
        std::vector<Table::Value> row{test.area.test};
        addAreaCells(question, test.area, row);
        table.addRow(row);
    }
    for (const TestResult& test : results.tests)
        document.sentences.push_back(sentenceOn(question, test.area));
    document.parts.push_back({"areas", "", std::move(table)});
    return document;
}

} // namespace vexroc
