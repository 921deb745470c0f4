#include "cli/output/Documents.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultColumns.h"
#include "cli/words/VisibleText.h"

namespace vexroc {

namespace {

constexpr std::array groupCountColumns{
    TableColumn{"positive1", "positive 1", CellRole::count, 1},
    TableColumn{"negative1", "negative 1", CellRole::count, 1},
    TableColumn{"positive2", "positive 2", CellRole::count, 1},
    TableColumn{"negative2", "negative 2", CellRole::count, 1},
};

constexpr std::array leftOutColumns{TableColumn{"left_out", "left out", CellRole::count, 1}};

constexpr std::array twoAreaColumns{
    TableColumn{"area1", "area 1", CellRole::statistic},
    TableColumn{"standard_error1", "std. error 1", CellRole::statistic},
    TableColumn{"area2", "area 2", CellRole::statistic},
    TableColumn{"standard_error2", "std. error 2", CellRole::statistic},
};

/// A row: what is compared, the numbers of cases, then what the comparison says.
void addRow(Row row, std::initializer_list<double> counts, const Difference& d, Table& table)
{
    row.add(counts).add({double(d.leftOut), d.first.area, d.first.stdError, d.second.area, d.second.stdError});
    table.addRow(row.add({d.difference, d.stdError, d.z, d.significance, d.lower, d.upper}).values());
}

Document pairedDocument(const Question& question, const Results& results)
{
    Document document{.command = "compare",
                      .heading = {"Areas under the ROC curves of the same cases, compared",
                                  questionHeading(question, *results.labels), pairedErrorHeading(question.level)},
                      .question = questionFacts(question, *results.labels)};
    addInference(document.question, pairedErrorWord, question.level);
    Table table(joined({testPairColumns, inPanel(1, stateColumns), leftOutColumns, inPanel(1, twoAreaColumns),
                        inPanel(2, differenceColumns)}));
    for (const Difference& d : results.differences)
        addRow(Row{d.first.test, d.second.test}, {double(d.first.positive), double(d.first.negative)}, d, table);
    document.parts.push_back({"comparisons", "", std::move(table)});
    return document;
}

Document groupDocument(const Question& question, const Results& results)
{
    const Grouping& grouping = *question.grouping;
    const std::vector<std::string>& groups = results.labels->groupWords();
    Document document{
        .command = "compare",
        .heading = {"Areas under the ROC curves of two independent groups, compared",
                    "Groups: " + visible(grouping.column) + " = " + visible(groups[0]) + " and " + visible(groups[1]),
                    questionHeading(question, *results.labels),
                    standardErrorHeading(question.biNegative, question.level)},
        .question = questionFacts(question, *results.labels)};
    document.question.emplace_back("group", grouping.column);
    addInference(document.question, standardErrorWord(question.biNegative), question.level);
    Table table(joined({groupPairColumns, groupCountColumns, leftOutColumns, inPanel(2, twoAreaColumns),
                        inPanel(3, differenceColumns)}));
    for (const Difference& d : results.differences)
        addRow(
            Row{d.first.test, d.first.group, d.second.group},
            {double(d.first.positive), double(d.first.negative), double(d.second.positive), double(d.second.negative)},
            d, table);
    document.parts.push_back({"comparisons", "", std::move(table)});
    return document;
}

} // namespace

Document comparisonDocument(const Question& question, const Results& results)
{
    return question.comparison == Comparison::paired ? pairedDocument(question, results)
                                                     : groupDocument(question, results);
}

} // namespace vexroc
