#include "cli/output/Documents.h"
#include "cli/output/Sentences.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"
#include "cli/words/VisibleText.h"

namespace vexroc {

namespace {

void addDifferences(const Question& question, const Results& results, Document& document)
{
    addDifferenceFacts(document.question, question);
    TableMaker table(question, comparisonColumns(question, true));
    for (const Difference& difference : results.differences) {
        addComparison(question, difference, table);
        document.sentences.push_back(sentenceOn(question, difference));
    }
    document.parts.push_back({"comparisons", "", table.take()});
}

Document pairedDocument(const Question& question, const Results& results)
{
    Document document{.command = "compare",
                      .heading = {"Areas under the ROC curves of the same cases, compared",
                                  questionHeading(question, *results.labels), pairedCasesHeading(question),
                                  differenceHeading(question)},
                      .question = questionFacts(question, *results.labels)};
    document.question.emplace_back("cases", pairedCasesWord(question));
    addDifferences(question, results, document);
    return document;
}

Document groupDocument(const Question& question, const Results& results)
{
    const Difference& any = results.differences.front(); // there is a test at least
    Document document{.command = "compare",
                      .heading = {"Areas under the ROC curves of two independent groups, compared",
                                  "Groups: 1, " + visible(any.first.group) + "; 2, " + visible(any.second.group),
                                  questionHeading(question, *results.labels), differenceHeading(question)},
                      .question = questionFacts(question, *results.labels)};
    document.question.emplace_back("group", question.grouping->column);
    addDifferences(question, results, document);
    return document;
}

} // namespace

Document comparisonDocument(const Question& question, const Results& results)
{
    return question.comparison == Comparison::paired ? pairedDocument(question, results)
                                                     : groupDocument(question, results);
}

} // namespace vexroc
