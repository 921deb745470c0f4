#include "cli/output/Documents.h"
#include "cli/output/comparisonRows.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultColumns.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace vexroc {

namespace {

constexpr TableColumn valueColumn{"by", "by", CellRole::name};
constexpr TableColumn groupColumn{"group", "group", CellRole::name};
constexpr std::array testColumns{testColumn, groupColumn};

constexpr std::array caseColumns{
    TableColumn{"cases", "cases", CellRole::name},
    TableColumn{"count", "count", CellRole::count},
};

constexpr std::array weightedCountColumns{
    TableColumn{"weighted_positive", "weighted positive", CellRole::count, 1},
    TableColumn{"weighted_negative", "weighted negative", CellRole::count, 1},
};

constexpr std::array shapeColumns{
    TableColumn{"gini", "Gini index", CellRole::statistic},
    TableColumn{"max_ks", "maximum K-S", CellRole::statistic},
    TableColumn{"max_ks_cut_off", "at cut-off", CellRole::measure},
};

constexpr std::array curveColumns{cutOffColumn, sensitivityColumn, specificityColumn};

constexpr std::array bestColumns{
    cutOffColumn,
    TableColumn{"youden", "Youden", CellRole::statistic},
    sensitivityColumn,
    specificityColumn,
    TableColumn{"true_positive", "TP", CellRole::count},
    TableColumn{"false_positive", "FP", CellRole::count},
    TableColumn{"true_negative", "TN", CellRole::count},
    TableColumn{"false_negative", "FN", CellRole::count},
};

constexpr std::array precisionRecallColumns{recallColumn, precisionColumn, interpolatedColumn};

/// The table of one kind over all values: a column of values leads where the question has one.
class TableMaker {
public:
    TableMaker(const Question& question, std::span<const TableColumn> columns)
        : byValue_(!question.by.empty()),
          table_(byValue_ ? joined({std::span(&valueColumn, 1), columns}) : joined({columns}))
    {
    }
    void setValue(const std::string& value) { value_ = value; }
    /// Names, then numbers.
    void add(std::span<const std::string_view> names, std::span<const double> numbers)
    {
        row_.clear();
        if (byValue_)
            row_.emplace_back(value_);
        row_.insert(row_.end(), names.begin(), names.end());
        row_.insert(row_.end(), numbers.begin(), numbers.end());
        table_.addRow(row_);
    }
    void add(std::initializer_list<std::string_view> names, std::initializer_list<double> numbers)
    {
        add(std::span(names.begin(), names.size()), std::span(numbers.begin(), numbers.size()));
    }
    Table take() { return std::move(table_); }

private:
    bool byValue_;
    std::string_view value_;
    std::vector<Table::Value> row_;
    Table table_;
};

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

std::string_view groupOf(const Area& area) { return area.group.empty() ? "all cases" : std::string_view(area.group); }

bool isWeighted(const Question& question) { return !question.weight.empty(); }

void addCases(const RowCounts& rows, bool weighted, TableMaker& table)
{
    const auto add = [&](std::string_view what, auto count) { table.add({what}, {static_cast<double>(count)}); };
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

Table areaTable(const Analysis& analysis)
{
    const bool weighted = isWeighted(analysis.question);
    const std::span<const TableColumn> weights =
        weighted ? std::span<const TableColumn>(weightedCountColumns) : std::span<const TableColumn>();
    const auto addArea = [&](const Area& a, TableMaker& table) {
        std::vector<double> numbers{double(a.positive), double(a.negative)};
        if (weighted)
            numbers.insert(numbers.end(), {a.weightedPositive, a.weightedNegative});
        std::ranges::copy(areaNumbers(a), std::back_inserter(numbers));
        numbers.insert(numbers.end(), {a.gini, a.ksMaximum, a.ksCutOff});
        table.add(std::array<std::string_view, 2>{a.test, groupOf(a)}, numbers);
    };
    return tableOf(
        analysis,
        joined({testColumns, inPanel(1, stateColumns), weights, inPanel(1, areaColumns), inPanel(2, shapeColumns)}),
        [&](const Results& results, TableMaker& table) {
            for (const TestResult& test : results.tests)
                addArea(test.area, table);
        });
}

Table comparisonTable(const Analysis& analysis)
{
    const bool paired = analysis.question.comparison == Comparison::paired;
    return tableOf(analysis, comparisonColumns(paired), [&](const Results& results, TableMaker& table) {
        for (const Difference& d : results.differences)
            table.add(comparisonNames(d, paired), comparisonNumbers(d, paired));
    });
}

Table bestCutOffTable(const Analysis& analysis)
{
    return tableOf(analysis, joined({testColumns, bestColumns}), [](const Results& results, TableMaker& table) {
        for (const TestResult& test : results.tests)
            for (const CutOff& c : test.best)
                table.add({test.area.test, groupOf(test.area)},
                          {c.value, test.area.ksMaximum, c.sensitivity, c.specificity, double(c.truePositive),
                           double(c.falsePositive), double(test.area.negative - c.falsePositive),
                           double(test.area.positive - c.truePositive)});
    });
}

std::vector<std::string> headingOf(const Question& question, const CaseLabels& labels)
{
    std::vector<std::string> lines{"ROC analysis", questionHeading(question, labels)};
    if (!question.by.empty())
        lines.push_back("One analysis by value of " + visible(question.by));
    if (isWeighted(question))
        lines.push_back("Weights: " + visible(question.weight)
                        + "; they enter the weighted counts only: areas and curves count every row once");
    if (!question.count.empty())
        lines.push_back("Cases per row: " + visible(question.count));
    lines.push_back(standardErrorHeading(question));
    if (question.comparison == Comparison::paired) {
        lines.push_back(std::string("Standard errors of differences: ") + pairedErrorWord);
        lines.push_back(pairedCasesHeading(question));
    }
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
    addInference(facts, standardErrorWord(question), question);
    if (paired)
        facts.emplace_back("standard_error_difference", pairedErrorWord);
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
    Document document{.command = "analyze",
                      .heading = headingOf(question, *analysis.labels),
                      .question = factsOf(question, *analysis.labels)};
    document.parts.push_back({"cases", "Cases", caseTable(analysis)});
    if (anyValue(analysis, [](const Results& results) { return !results.tests.empty(); }))
        document.parts.push_back({"areas", "Areas under the ROC curves", areaTable(analysis)});
    if (anyValue(analysis, [](const Results& results) { return !results.differences.empty(); }))
        document.parts.push_back({"comparisons", "Differences between the areas", comparisonTable(analysis)});
    if (analysis.bestTable && analysis.anyResult())
        document.parts.push_back({"best_cut_offs", "Best cut-offs by Youden's index: sensitivity + specificity - 1",
                                  bestCutOffTable(analysis)});
    return document;
}

Table curvePoints(const Analysis& analysis)
{
    return tableOf(analysis, joined({testColumns, curveColumns}), [](const Results& results, TableMaker& table) {
        for (const auto& [area, roc, precisionRecall, best] : results.tests)
            for (std::size_t i = 0; i < roc.size(); ++i)
                table.add({area.test, groupOf(area)}, {roc.cutOffs[i], roc.sensitivity[i], roc.specificity[i]});
    });
}

Table precisionRecallPoints(const Analysis& analysis)
{
    return tableOf(analysis, joined({testColumns, precisionRecallColumns}),
                   [](const Results& results, TableMaker& table) {
                       for (const auto& [area, roc, curve, best] : results.tests)
                           for (std::size_t i = 0; i < curve.size(); ++i)
                               table.add({area.test, groupOf(area)},
                                         {curve.recall[i], curve.precision[i], double(curve.interpolated[i])});
                   });
}

} // namespace vexroc
