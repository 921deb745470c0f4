#include "cli/output/resultTables.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace vexroc {

namespace {

constexpr TableColumn valueColumn{"by", "by", CellRole::name};

constexpr TableColumn positiveColumn{"positive", "positive", CellRole::count, 1};
constexpr TableColumn negativeColumn{"negative", "negative", CellRole::count, 1};
constexpr TableColumn leftOutColumn{"left_out", "left out", CellRole::count, 1, true};

constexpr std::array weightedColumns{
    TableColumn{"weighted_positive", "weighted positive", CellRole::count, 1},
    TableColumn{"weighted_negative", "weighted negative", CellRole::count, 1},
};

constexpr std::array testPairColumns{
    TableColumn{"test1", "test 1", CellRole::name},
    TableColumn{"test2", "test 2", CellRole::name},
    positiveColumn,
    negativeColumn,
};

constexpr std::array groupCountColumns{
    TableColumn{"positive1", "positive 1", CellRole::count, 1},
    TableColumn{"negative1", "negative 1", CellRole::count, 1},
    TableColumn{"positive2", "positive 2", CellRole::count, 1},
    TableColumn{"negative2", "negative 2", CellRole::count, 1},
};

constexpr std::array twoAreaColumns{
    TableColumn{"area1", "area 1", CellRole::statistic, 2},
    TableColumn{"std_error1", "SE 1", CellRole::statistic, 2},
    TableColumn{"area2", "area 2", CellRole::statistic, 2},
    TableColumn{"std_error2", "SE 2", CellRole::statistic, 2},
};

constexpr std::array differenceColumns{
    TableColumn{"difference", "difference", CellRole::statistic, 3},
    TableColumn{"std_error_difference", "SE", CellRole::statistic, 3},
    TableColumn{"z", "z", CellRole::statistic, 3},
};

constexpr TableColumn pColumn{"p_value", "p", CellRole::pValue, 3};
constexpr TableColumn log10PColumn{"log10_p", "", CellRole::statistic, 3}; // for programs: where p underflows
constexpr TableColumn lowerColumn{"lower", "lower", CellRole::statistic, 3};
constexpr TableColumn upperColumn{"upper", "upper", CellRole::statistic, 3};
// For programs: headings say it to people.
constexpr TableColumn errorColumn{"error", "", CellRole::name, 3};
constexpr TableColumn alternativeColumn{"alternative", "", CellRole::name, 3};

void addNumbers(std::initializer_list<double> numbers, std::vector<Table::Value>& row)
{
    row.insert(row.end(), numbers.begin(), numbers.end());
}

void addCount(long long count, std::vector<Table::Value>& row) { row.emplace_back(static_cast<double>(count)); }

void addCases(const Area& area, std::vector<Table::Value>& row)
{
    addCount(area.positive, row);
    addCount(area.negative, row);
}

} // namespace

TableColumn groupColumn(const Question& question)
{
    return {"group", question.grouping ? "group" : "", CellRole::name};
}

std::string_view groupOf(const Area& area) { return area.group.empty() ? "all cases" : std::string_view(area.group); }

std::vector<TableColumn> perTest(const Question& question, std::span<const TableColumn> columns)
{
    const TableColumn group = groupColumn(question);
    return joined({std::span(&testColumn, 1), std::span(&group, 1), columns});
}

TableMaker::TableMaker(const Question& question, std::span<const TableColumn> columns)
    : byValue_(!question.by.empty()),
      table_(byValue_ ? joined({std::span(&valueColumn, 1), columns}) : joined({columns}))
{
}

void TableMaker::add(std::span<const Table::Value> cells)
{
    row_.clear();
    if (byValue_)
        row_.emplace_back(value_);
    std::ranges::copy(cells, std::back_inserter(row_));
    table_.addRow(row_);
}

std::vector<TableColumn> areaColumns(const Question& question, const AreaMethods& methods)
{
    constexpr std::array countColumns{positiveColumn, negativeColumn, leftOutColumn};
    const std::span<const TableColumn> weights =
        question.weight.empty() ? std::span<const TableColumn>() : std::span<const TableColumn>(weightedColumns);
    const std::array columns{
        TableColumn{"area", "area", CellRole::statistic},
        TableColumn{"std_error", "SE", CellRole::statistic},
        errorColumn,
        pColumn,
        log10PColumn,
        TableColumn{"p_method", methods.areOfSeveralTests() ? "p by" : "", CellRole::name},
        alternativeColumn,
        TableColumn{"null_area", "", CellRole::statistic},
        lowerColumn,
        upperColumn,
        TableColumn{"interval", methods.areOfSeveralIntervals() ? "interval" : "", CellRole::name},
    };
    return joined({countColumns, weights, asPart(2, columns)});
}

void addAreaCells(const Question& question, const Area& area, std::vector<Table::Value>& row)
{
    addCases(area, row);
    addCount(area.leftOut, row);
    if (!question.weight.empty())
        addNumbers({area.weightedPositive, area.weightedNegative}, row);
    const Inference& asked = question.inference;
    row.insert(row.end(),
               {area.area, area.stdError, area.error, area.pValue, area.log10P, area.pMethod, asked.alternative,
                asked.nullArea, area.lower, area.upper, area.interval});
}

std::vector<TableColumn> comparisonColumns(const Question& question, bool groupsInCommon)
{
    std::vector<TableColumn> columns(testPairColumns.begin(), testPairColumns.end());
    if (question.comparison == Comparison::independent)
        columns = joined({std::array{testColumn, TableColumn{"group1", groupsInCommon ? "" : "group 1", CellRole::name},
                                     TableColumn{"group2", groupsInCommon ? "" : "group 2", CellRole::name}},
                          groupCountColumns});
    columns.push_back(leftOutColumn);
    constexpr std::array inferenceColumns{errorColumn,       pColumn,     log10PColumn,
                                          alternativeColumn, lowerColumn, upperColumn};
    return joined({columns, twoAreaColumns, differenceColumns, inferenceColumns});
}

void addComparison(const Question& question, const Difference& d, TableMaker& table)
{
    std::vector<Table::Value> row{d.first.test};
    if (question.comparison == Comparison::paired) {
        row.emplace_back(d.second.test);
        addCases(d.first, row);
    } else {
        row.emplace_back(groupOf(d.first));
        row.emplace_back(groupOf(d.second));
        addCases(d.first, row);
        addCases(d.second, row);
    }
    addCount(d.leftOut, row);
    addNumbers({d.first.area, d.first.stdError, d.second.area, d.second.stdError, d.difference, d.stdError, d.z}, row);
    row.insert(row.end(), {d.error, d.pValue, d.log10P, question.inference.alternative, d.lower, d.upper});
    table.add(row);
}

CutOffCell cutOffCell(const TestResult& test, const CutOff& cutOff) { return {cutOff.value, test.readingOf(cutOff)}; }

CutOffCell precisionRecallCutOff(const TestResult& test, std::size_t point)
{
    const int measured = test.precisionRecall.rocPoint[point];
    if (measured == PrecisionRecallCurve::none)
        return {notComputed, {}};
    return cutOffCell(test, test.roc.at(static_cast<std::size_t>(measured)));
}

} // namespace vexroc
