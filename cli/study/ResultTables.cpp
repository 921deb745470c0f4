#include "cli/study/ResultTables.h"

#include "cli/output/ResultColumns.h"
#include "cli/picture/curvesOf.h"
#include "cli/study/Meanings.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <string_view>
#include <unordered_map>

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

constexpr std::array shapeColumns{
    TableColumn{"gini", "Gini index", CellRole::statistic},
    TableColumn{"max_ks", "maximum K-S", CellRole::statistic},
    TableColumn{"max_ks_cut_off", "at cut-off", CellRole::measure},
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

constexpr std::array curveColumns{
    variableColumn,
    groupColumn,
    TableColumn{"cut_off", "cut-off", CellRole::measure},
    TableColumn{"sensitivity", "sensitivity", CellRole::statistic},
    TableColumn{"specificity", "specificity", CellRole::statistic},
};

constexpr std::array bestColumns{
    variableColumn,
    groupColumn,
    TableColumn{"cut_off", "cut-off", CellRole::measure},
    TableColumn{"youden", "Youden", CellRole::statistic},
    TableColumn{"sensitivity", "sensitivity", CellRole::statistic},
    TableColumn{"specificity", "specificity", CellRole::statistic},
    TableColumn{"true_positive", "TP", CellRole::count},
    TableColumn{"false_positive", "FP", CellRole::count},
    TableColumn{"true_negative", "TN", CellRole::count},
    TableColumn{"false_negative", "FN", CellRole::count},
};

constexpr std::array precisionRecallColumns{
    variableColumn,
    groupColumn,
    TableColumn{"recall", "recall", CellRole::statistic},
    TableColumn{"precision", "precision", CellRole::statistic},
    TableColumn{"interpolated", "interpolated", CellRole::flag},
};

constexpr double notComputed = std::numeric_limits<double>::quiet_NaN();

Table emptyAreaTable(OutputFormat format, bool weighted)
{
    const std::span<const TableColumn> weights =
        weighted ? std::span<const TableColumn>(weightedCountColumns) : std::span<const TableColumn>();
    return {format, joined({recordColumns, countColumns, weights, inPanel(1, areaColumns), inPanel(2, shapeColumns)})};
}

/// (maximum, cut-off) of a record; a negative maximum says that there is none.
std::pair<double, double> kolmogorovSmirnov(const ROCOutBase& record)
{
    const std::pair<double, double> found = record.getKolmogorovSmirnov();
    return found.first < 0.0 ? std::pair{notComputed, notComputed} : found;
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
    for (const RowCounts::Gap& gap : rows.gaps)
        table.addRow({"missing: " + gap.test, static_cast<double>(gap.rows())});
    return table;
}

Table areaTable(OutputFormat format, const ROCOutputs& results, const VexVarList& variables, bool weighted)
{
    Table table = emptyAreaTable(format, weighted);
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

Table missingAreaTable(OutputFormat format, const HostData& data)
{
    const bool weighted = data.weight >= 0;
    const bool paired = data.rows.incomplete > 0;                     // rows with a gap are not among those used
    std::unordered_map<std::string_view, const RowCounts::Gap*> gaps; // there may be tens of thousands of tests
    if (!paired)
        for (const RowCounts::Gap& gap : data.rows.gaps)
            gaps.emplace(gap.test, &gap);
    Table table = emptyAreaTable(format, weighted);
    for (const int test : data.tests) {
        const std::string variable = variableName(data.variables, test);
        const auto found = gaps.find(variable);
        const RowCounts::Gap gap = found == gaps.end() ? RowCounts::Gap{} : *found->second;
        Row row{variable, "all cases"};
        row.add({double(data.rows.positive - gap.positive), double(data.rows.negative - gap.negative)});
        if (weighted)
            row.add({gap.rows() == 0 ? data.rows.weightedPositive : notComputed,
                     gap.rows() == 0 ? data.rows.weightedNegative : notComputed});
        for (std::size_t statistic = 0; statistic < areaColumns.size() + shapeColumns.size(); ++statistic)
            row.add({notComputed});
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

Table bestCutOffTable(OutputFormat format, const ROCOutputs& results, const VexVarList& variables)
{
    Table table(format, bestColumns);
    for (const ROCOutBase* const record : results.getROCBaseStats()) {
        const std::string variable = variableName(variables, record->getTestVarInd());
        const std::string group = groupOf(*record, variables);
        const double index = kolmogorovSmirnov(*record).first;
        for (const CutOffPoint& best : bestCutOffs(*record)) {
            const int trueNegative = record->getNegativeCount() - best.falsePositive;
            const int falseNegative = record->getPositiveCount() - best.truePositive;
            table.addRow({variable, group, best.cutOff, index, best.sensitivity, best.specificity,
                          double(best.truePositive), double(best.falsePositive), double(trueNegative),
                          double(falseNegative)});
        }
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
        for (const PrecisionRecallPoint& point : precisionRecallOf(*record))
            table.addRow({variableName(variables, record->getTestVarInd()), groupOf(*record, variables), point.recall,
                          point.precision, point.measured ? 0.0 : 1.0});
    return table;
}

} // namespace vexroc
