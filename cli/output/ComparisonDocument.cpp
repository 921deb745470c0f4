#include "cli/output/Documents.h"
#include "cli/output/comparisonRows.h"
#include "cli/output/questionWords.h"
#include "cli/words/VisibleText.h"

namespace vexroc {

namespace {

Table comparisonTable(const Results& results, bool paired)
{
    Table table(comparisonColumns(paired));
    for (const Difference& difference : results.differences) {
        Row row(comparisonNames(difference, paired));
        table.addRow(row.add(comparisonNumbers(difference, paired)).values());
    }
    return table;
}

Document pairedDocument(const Question& question, const Results& results)
{
    Document document{.command = "compare",
                      .heading = {"Areas under the ROC curves of the same cases, compared",
                                  questionHeading(question, *results.labels), pairedCasesHeading(question),
                                  pairedErrorHeading(question)},
                      .question = questionFacts(question, *results.labels)};
    document.question.emplace_back("cases", pairedCasesWord(question));
    addInference(document.question, pairedErrorWord, question);
    document.parts.push_back({"comparisons", "", comparisonTable(results, true)});
    return document;
}

Document groupDocument(const Question& question, const Results& results)
{
    const Grouping& grouping = *question.grouping;
    Document document{.command = "compare",
                      .heading = {"Areas under the ROC curves of two independent groups, compared",
                                  "Groups: " + visible(grouping.column) + " = " + visible(grouping.selected[0])
                                      + " and " + visible(grouping.selected[1]),
                                  questionHeading(question, *results.labels), standardErrorHeading(question)},
                      .question = questionFacts(question, *results.labels)};
    document.question.emplace_back("group", grouping.column);
    addInference(document.question, standardErrorWord(question), question);
    document.parts.push_back({"comparisons", "", comparisonTable(results, false)});
    return document;
}

} // namespace

Document comparisonDocument(const Question& question, const Results& results)
{
    return question.comparison == Comparison::paired ? pairedDocument(question, results)
                                                     : groupDocument(question, results);
}

} // namespace vexroc
