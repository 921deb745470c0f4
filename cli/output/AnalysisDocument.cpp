#include "cli/output/InferenceDocuments.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>

namespace vexroc {

namespace {

constexpr std::array caseColumns{
    TableColumn{"cases", "cases", CellRole::name},
    TableColumn{"count", "count", CellRole::count},
};

constexpr std::array shapeColumns{
    TableColumn{"gini", "Gini index", CellRole::statistic, 3},
    TableColumn{"max_ks", "maximum K-S", CellRole::statistic, 3},
    TableColumn{"max_ks_cut_off", "at cut-off", CellRole::cutOff, 3},
};

constexpr std::array curveColumns{cutOffColumn, sensitivityColumn, specificityColumn};

constexpr std::array bestColumns{
    cutOffColumn,
    TableColumn{"youden", "Youden", CellRole::statistic},
    sensitivityColumn,
    specificityColumn,
    TableColumn{"true_positive", "TP", CellRole::count, 1},
    TableColumn{"false_positive", "FP", CellRole::count, 1},
    TableColumn{"true_negative", "TN", CellRole::count, 1},
    TableColumn{"false_negative", "FN", CellRole::count, 1},
};

constexpr std::array precisionRecallColumns{cutOffColumn, recallColumn, precisionColumn, interpolatedColumn};

/// The table that `addRows(value's results, table)` fills, value by value.
Table tableOf(const Analysis& analysis, std::span<const TableColumn> columns, auto addRows)
{
    TableMaker table(analysis.question, columns);
    for (const auto& [value, results] : analysis.values) {
        table.setValue(value);
        addRows(results, table);
    }
    return table.take();
}

bool isWeighted(const Question& question) { return !question.weight.empty(); }

void addCases(const RowCounts& rows, bool weighted, TableMaker& table)
{
    const auto add = [&](std::string_view what, auto count) { table.add({what, static_cast<double>(count)}); };
    if (rows.given != rows.read)
        add("rows of the table", rows.given);
    add("rows read", rows.read);
    add("left out", rows.leftOut());
    for (const auto& [reason, count] : rows.reasons())
        add("left out: " + reason, count);
    add("used", rows.used());
    add("positive", rows.positive);
    add("negative", rows.negative);
    if (weighted) {
        add("weighted positive", rows.weightedPositive);
        add("weighted negative", rows.weightedNegative);
    }
    for (const RowCounts::Gap& gap : rows.gaps)
        add("missing: " + gap.test, gap.rows());
}

Table caseTable(const Analysis& analysis)
{
    return tableOf(analysis, caseColumns, [&](const Results& results, TableMaker& table) {
        addCases(results.rows, isWeighted(analysis.question), table);
    });
}

/// The cut-off of the maximum, as the best cut-offs have it.
CutOffCell maximumCell(const TestResult& test)
{
    const auto best = std::ranges::find(test.best, test.area.ksCutOff, &CutOff::value); // exact: the same number
    return best != test.best.end() ? cutOffCell(test, *best) : CutOffCell{test.area.ksCutOff, test.area.reading};
}

Table areaTable(const Analysis& analysis, const AreaMethods& methods)
{
    const Question& question = analysis.question;
    return tableOf(analysis, perTest(question, joined({areaColumns(question, methods), shapeColumns})),
                   [&](const Results& results, TableMaker& table) {
                       for (const TestResult& test : results.tests) {
                           std::vector<Table::Value> row{test.area.test, groupOf(test.area)};
                           addAreaCells(question, test.area, row);
                           row.insert(row.end(), {test.area.gini, test.area.ksMaximum, maximumCell(test)});
                           table.add(row);
                       }
                   });
}

/// The groups of all differences, as the title of their table says them; empty where they are not the same.
std::string groupsInCommon(const Analysis& analysis)
{
    const Difference* first = nullptr;
    for (const ValueResults& value : analysis.values)
        for (const Difference& difference : value.results.differences) {
            first = first ? first : &difference;
            if (difference.first.group != first->first.group || difference.second.group != first->second.group)
                return "";
        }
    const bool grouped = first && analysis.question.comparison == Comparison::independent;
    return grouped ? "; groups: 1, " + visible(first->first.group) + "; 2, " + visible(first->second.group) : "";
}

Document::Part comparisonPart(const Analysis& analysis)
{
    const std::string groups = groupsInCommon(analysis);
    const auto addComparisons = [&](const Results& results, TableMaker& table) {
        for (const Difference& difference : results.differences)
            addComparison(analysis.question, difference, table);
    };
    return {"comparisons", "Differences between the areas" + groups,
            tableOf(analysis, comparisonColumns(analysis.question, !groups.empty()), addComparisons)};
}

Table bestCutOffTable(const Analysis& analysis)
{
    return tableOf(analysis, perTest(analysis.question, bestColumns), [](const Results& results, TableMaker& table) {
        for (const TestResult& test : results.tests)
            for (const CutOff& c : test.best)
                table.add({test.area.test, groupOf(test.area), cutOffCell(test, c), test.area.ksMaximum, c.sensitivity,
                           c.specificity, double(c.truePositive), double(c.falsePositive),
                           double(test.area.negative - c.falsePositive), double(test.area.positive - c.truePositive)});
    });
}

std::vector<std::string> headingOf(const Question& question, const CaseLabels& labels, const AreaMethods& methods)
{
    std::vector<std::string> lines{"ROC analysis", questionHeading(question, labels)};
    if (!question.by.empty())
        lines.push_back("One analysis by value of " + visible(question.by));
    if (isWeighted(question))
        lines.push_back("Weights: " + visible(question.weight)
                        + (question.hasProbabilityWeights()
                               ? "; inverse sampling probabilities"
                               : "; they enter the weighted counts only: areas and curves count every row once"));
    if (!question.count.empty())
        lines.push_back("Cases per row: " + visible(question.count));
    lines.push_back(areaHeading(question, methods));
    if (question.comparison != Comparison::none)
        lines.push_back("Interval of differences: " + differenceWords(question));
    if (question.comparison == Comparison::paired)
        lines.push_back(pairedCasesHeading(question));
    return lines;
}

std::vector<Fact> factsOf(const Question& question, const CaseLabels& labels)
{
    std::vector<Fact> facts = questionFacts(question, labels);
    if (question.grouping)
        facts.emplace_back("group", question.grouping->column);
    if (!question.by.empty())
        facts.emplace_back("by", question.by);
    if (isWeighted(question))
        facts.emplace_back("weight", question.weight);
    const bool paired = question.comparison == Comparison::paired;
    if (question.comparison != Comparison::none)
        facts.emplace_back("comparison", paired ? "paired" : "independent");
    if (paired)
        facts.emplace_back("cases", pairedCasesWord(question));
    if (isWeighted(question))
        facts.emplace_back("weight_kind", question.hasProbabilityWeights() ? "probability" : "counts");
    addAreaFacts(facts, question);
    if (question.comparison != Comparison::none)
        facts.emplace_back("error_difference", question.errorOfDifferences());
    return facts;
}

bool anyValue(const Analysis& analysis, auto holds)
{
    return std::ranges::any_of(analysis.values, [&](const ValueResults& value) { return holds(value.results); });
}

} // namespace

bool Analysis::anyResult() const
{
    return anyValue(*this, [](const Results& results) { return !results.failure; });
}

std::optional<RunMessage> Analysis::failure() const
{
    if (values.empty() || anyResult())
        return std::nullopt;
    const RunMessage& last = *values.back().results.failure;
    return question.by.empty()
        ? last
        : RunMessage{last.code, last.name, "no value of " + inQuotes(question.by) + " gave a result"};
}

long long Analysis::cases(long long RowCounts::*state) const
{
    long long sum = 0;
    for (const ValueResults& value : values)
        sum += value.results.failure ? 0 : value.results.rows.*state;
    return sum;
}

Document analysisDocument(const Analysis& analysis)
{
    const Question& question = analysis.question;
    AreaMethods methods;
    for (const ValueResults& value : analysis.values)
        methods.add(value.results);
    Document document{.command = "analyze",
                      .heading = headingOf(question, *analysis.labels, methods),
                      .question = factsOf(question, *analysis.labels)};
    document.parts.push_back({"cases", "Cases", caseTable(analysis)});
    if (anyValue(analysis, [](const Results& results) { return !results.tests.empty(); }))
        document.parts.push_back({"areas", "Areas under the ROC curves", areaTable(analysis, methods)});
    if (anyValue(analysis, [](const Results& results) { return !results.differences.empty(); }))
        document.parts.push_back(comparisonPart(analysis));
    if (!analysis.precisionRecallAreas.empty())
        document.parts.push_back(precisionRecallAreaPart(analysis));
    if (analysis.bestTable && analysis.anyResult())
        document.parts.push_back({"best_cut_offs", "Best cut-offs by Youden's index: sensitivity + specificity - 1",
                                  bestCutOffTable(analysis)});
    return document;
}

Table curvePoints(const Analysis& analysis)
{
    return tableOf(analysis, perTest(analysis.question, curveColumns), [](const Results& results, TableMaker& table) {
        for (const TestResult& test : results.tests)
            for (std::size_t i = 0; i < test.roc.size(); ++i) {
                const CutOff point = test.roc.at(i);
                table.add({test.area.test, groupOf(test.area), cutOffCell(test, point), point.sensitivity,
                           point.specificity});
            }
    });
}

Table precisionRecallPoints(const Analysis& analysis)
{
    return tableOf(analysis, perTest(analysis.question, precisionRecallColumns),
                   [](const Results& results, TableMaker& table) {
                       for (const TestResult& test : results.tests) {
                           const PrecisionRecallCurve& curve = test.precisionRecall;
                           for (std::size_t i = 0; i < curve.size(); ++i)
                               table.add({test.area.test, groupOf(test.area), precisionRecallCutOff(test, i),
                                          curve.recall[i], curve.precision[i], double(curve.interpolated[i])});
                       }
                   });
}

} // namespace vexroc
