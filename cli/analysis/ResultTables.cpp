#include "cli/analysis/ResultTables.h"

#include "cli/analysis/Meanings.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <limits>
#include <span>

namespace vexroc {

namespace {

using ROCALG_920::ROCComparisonOutStats;
using ROCALG_920::ROCOutBase;
using ROCALG_920::ROCOutputs;
using VexXML_920::VexVarList;

constexpr TableColumn variableColumn{"variable", "variable", CellRole::name};
constexpr TableColumn groupColumn{"group", "group", CellRole::name};
constexpr std::array recordColumns{variableColumn, groupColumn};

constexpr std::array caseColumns{
    TableColumn{"cases", "cases", CellRole::name},
    TableColumn{"count", "count", CellRole::count},
};

constexpr std::array countColumns{
    TableColumn{"positive", "positive", CellRole::count, 1},
    TableColumn{"negative", "negative", CellRole::count, 1},
};

constexpr std::array weightedCountColumns{
    TableColumn{"weighted_positive", "weighted positive", CellRole::count, 1},
    TableColumn{"weighted_negative", "weighted negative", CellRole::count, 1},
};

constexpr std::array areaColumns{
    TableColumn{"area", "area", CellRole::statistic, 1},
    TableColumn{"standard_error", "std. error", CellRole::statistic, 1},
    TableColumn{"significance", "significance", CellRole::significance, 1},
    TableColumn{"lower", "lower", CellRole::statistic, 1},
    TableColumn{"upper", "upper", CellRole::statistic, 1},
    TableColumn{"gini", "Gini index", CellRole::statistic, 2},
    TableColumn{"max_ks", "maximum K-S", CellRole::statistic, 2},
    TableColumn{"max_ks_cut_off", "at cut-off", CellRole::measure, 2},
};

constexpr std::array pairColumns{
    TableColumn{"variable1", "first", CellRole::name},
    TableColumn{"variable2", "second", CellRole::name},
};

constexpr std::array groupPairColumns{
    variableColumn,
    TableColumn{"group1", "first", CellRole::name},
    TableColumn{"group2", "second", CellRole::name},
};

constexpr std::array differenceColumns{
    TableColumn{"difference", "difference", CellRole::statistic},
    TableColumn{"standard_error_difference", "std. error", CellRole::statistic},
    TableColumn{"z", "z", CellRole::statistic},
    TableColumn{"significance", "significance", CellRole::significance},
    TableColumn{"lower", "lower", CellRole::statistic},
    TableColumn{"upper", "upper", CellRole::statistic},
};

constexpr std::array curveColumns{
    variableColumn,
    groupColumn,
    TableColumn{"cut_off", "cut-off", CellRole::measure},
    TableColumn{"sensitivity", "sensitivity", CellRole::statistic},
    TableColumn{"specificity", "specificity", CellRole::statistic},
};

constexpr std::array precisionRecallColumns{
    variableColumn,
    groupColumn,
    TableColumn{"recall", "recall", CellRole::statistic},
    TableColumn{"precision", "precision", CellRole::statistic},
    TableColumn{"interpolated", "interpolated", CellRole::flag},
};

std::vector<TableColumn> joined(std::initializer_list<std::span<const TableColumn>> parts)
{
    std::vector<TableColumn> columns;
    for (const std::span<const TableColumn> part : parts)
        std::ranges::copy(part, std::back_inserter(columns));
    return columns;
}

/// The statistics and counts of one row, behind its names.
class Row {
public:
    explicit Row(std::initializer_list<std::string_view> names)
    {
        for (const std::string_view name : names)
            values_.emplace_back(name);
    }
    void add(std::initializer_list<double> numbers)
    {
        for (const double number : numbers)
            values_.emplace_back(number);
    }
    [[nodiscard]] std::span<const Table::Value> values() const noexcept { return values_; }

private:
    std::vector<Table::Value> values_;
};

/// (maximum, cut-off) of a record; a negative maximum says that there is none.
std::pair<double, double> kolmogorovSmirnov(const ROCOutBase& record)
{
    constexpr double notComputed = std::numeric_limits<double>::quiet_NaN();
    const std::pair<double, double> found = record.getKolmogorovSmirnov();
    return found.first < 0.0 ? std::pair{notComputed, notComputed} : found;
}

/// The same bits: a precision of no positive decision is NaN.
bool samePoint(const std::pair<double, double>& a, const std::pair<double, double>& b)
{
    const auto bits = [](double x) { return std::bit_cast<std::uint64_t>(x); };
    return bits(a.first) == bits(b.first) && bits(a.second) == bits(b.second);
}

void addPrecisionRecall(const ROCOutBase& record, const std::string& variable, const std::string& group, Table& table)
{
    // A record keeps the measured points as a list of their own, in the same order.
    const auto& measured = record.getPrecisionRecallCoordinates();
    auto next = measured.begin();
    for (const auto& point : record.getPrecisionRecallDraw()) {
        const bool isMeasured = next != measured.end() && samePoint(point, *next);
        next += isMeasured ? 1 : 0;
        table.addRow({variable, group, point.second, point.first, isMeasured ? 0.0 : 1.0});
    }
}

} // namespace

Table caseTable(OutputFormat format, const RowCounts& rows, bool weighted)
{
    Table table(format, caseColumns);
    table.addRow({"rows read", static_cast<double>(rows.read)});
    table.addRow({"left out", static_cast<double>(rows.read - rows.used())});
    for (const auto& [reason, count] : rows.leftOut())
        table.addRow({"left out: " + reason, static_cast<double>(count)});
    table.addRow({"used", static_cast<double>(rows.used())});
    table.addRow({"positive", static_cast<double>(rows.positive)});
    table.addRow({"negative", static_cast<double>(rows.negative)});
    if (weighted) {
        table.addRow({"weighted positive", rows.weightedPositive});
        table.addRow({"weighted negative", rows.weightedNegative});
    }
    for (const auto& [test, count] : rows.missingTests)
        table.addRow({"missing: " + test, static_cast<double>(count)});
    return table;
}

Table areaTable(OutputFormat format, const ROCOutputs& results, const VexVarList& variables, bool weighted)
{
    Table table(format, weighted ? joined({recordColumns, countColumns, weightedCountColumns, areaColumns})
                                 : joined({recordColumns, countColumns, areaColumns}));
    for (const ROCOutBase* const record : results.getROCBaseStats()) {
        const std::string variable = variableName(variables, record->getTestVarInd());
        const std::string group = groupOf(*record, variables);
        Row row{variable, group};
        row.add({double(record->getPositiveCount()), double(record->getNegativeCount())});
        if (weighted)
            row.add({record->getPosFreqCount(), record->getNegFreqCount()});
        const auto [maximum, cutOff] = kolmogorovSmirnov(*record);
        row.add({record->getArea(), record->getStdError(), record->getAsymptoticSig(), record->getCILower(),
                 record->getCIUpper(), record->getGiniIndex(), maximum, cutOff});
        table.addRow(row.values());
    }
    return table;
}

Table comparisonTable(OutputFormat format, const ROCOutputs& results, const VexVarList& variables, bool paired)
{
    const std::span<const TableColumn> names = paired ? std::span<const TableColumn>(pairColumns) : groupPairColumns;
    Table table(format, joined({names, differenceColumns}));
    for (const ROCComparisonOutStats* const comparison : results.getROCComparisonStats()) {
        const ROCOutBase& one = *comparison->getCompare1Stats();
        const ROCOutBase& two = *comparison->getCompare2Stats();
        const std::string variable = variableName(variables, one.getTestVarInd());
        const std::string first = groupOf(one, variables);
        const std::string second = paired ? variableName(variables, two.getTestVarInd()) : groupOf(two, variables);
        Row row = paired ? Row{variable, second} : Row{variable, first, second};
        row.add({comparison->getAUCDiff(), comparison->getStdErrorDiff(), comparison->getZStats(),
                 comparison->getAsymptoticSig(), comparison->getCILower(), comparison->getCIUpper()});
        table.addRow(row.values());
    }
    return table;
}

Table curveTable(const ROCOutputs& results, const VexVarList& variables)
{
    Table table(OutputFormat::csv, curveColumns);
    for (const ROCOutBase* const record : results.getROCBaseStats()) {
        const std::string variable = variableName(variables, record->getTestVarInd());
        const std::string group = groupOf(*record, variables);
        const auto& points = record->getSensitivitySpecificity();
        for (std::size_t i = 0; i < points.size(); ++i)
            table.addRow({variable, group, record->getCutOffPoints()[i], points[i].first, points[i].second});
    }
    return table;
}

Table precisionRecallTable(const ROCOutputs& results, const VexVarList& variables)
{
    Table table(OutputFormat::csv, precisionRecallColumns);
    for (const ROCOutBase* const record : results.getROCBaseStats())
        addPrecisionRecall(*record, variableName(variables, record->getTestVarInd()), groupOf(*record, variables),
                           table);
    return table;
}

} // namespace vexroc
