#include "cli/output/Documents.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"
#include "cli/study/Remarks.h"
#include "cli/words/VisibleText.h"

namespace vexroc {

namespace {

Document pairedDocument(const Question& question, const Results& results)
{
    Document document{.command = "compare",
                      .heading = {"Areas under the ROC curves of the same cases, compared", questionHeading(question),
                                  pairedErrorHeading(question.level)},
                      .question = questionFacts(question)};
    addInference(document.question, pairedErrorWord, question.level);
    TableMaker table(question, comparisonColumns(question, true));
    for (const Difference& d : results.differences) {
        addComparison(question, d, table);
        const std::string subject = visible(d.first.test) + " and " + visible(d.second.test);
        addAreaNotes(subject, d.first, document.notes);
        addDifferenceCautions(subject, d, document.notes);
    }
    document.parts.push_back({"comparisons", "", table.take()});
    return document;
}

void addGroupNotes(const Question& question, const Area& area, std::vector<std::string>& notes)
{
    const std::string subject = visible(area.test) + " where " + visible(area.group);
    addAreaNotes(subject, area, notes);
    if (question.biNegative)
        addBiNegativeNotes(subject, area, notes);
}

Document groupDocument(const Question& question, const Results& results)
{
    const Difference& any = results.differences.front(); // there is a test at least
    Document document{.command = "compare",
                      .heading = {"Areas under the ROC curves of two independent groups, compared",
                                  "Groups: 1, " + visible(any.first.group) + "; 2, " + visible(any.second.group),
                                  questionHeading(question), standardErrorHeading(question.biNegative, question.level)},
                      .question = questionFacts(question)};
    document.question.emplace_back("group", question.grouping->column);
    addInference(document.question, standardErrorWord(question.biNegative), question.level);
    TableMaker table(question, comparisonColumns(question, true));
    for (const Difference& d : results.differences) {
        addComparison(question, d, table);
        addGroupNotes(question, d.first, document.notes);
        addGroupNotes(question, d.second, document.notes);
        addDifferenceCautions(visible(d.first.test), d, document.notes);
    }
    if (const long long others = results.rows.otherGroup; others > 0)
        document.notes.push_back("rows in neither group, not part of the analysis: " + std::to_string(others));
    document.parts.push_back({"comparisons", "", table.take()});
    return document;
}

} // namespace

Document comparisonDocument(const Question& question, const Results& results)
{
    return question.comparison == Comparison::paired ? pairedDocument(question, results)
                                                     : groupDocument(question, results);
}

} // namespace vexroc
