#include "cli/output/operatingRows.h"

#include "cli/output/inferenceWords.h"
#include "cli/output/resultTables.h"
#include "cli/words/Numbers.h"

#include <array>

namespace vexroc {

namespace {

/// A measure with its limits, in the order of Measure.
struct MeasureColumns {
    std::string_view name;
    std::string_view lower;
    std::string_view upper;
    std::string_view title;
};
constexpr std::array<MeasureColumns, measureCount> measures{{
    {"sensitivity", "sensitivity_lower", "sensitivity_upper", "sensitivity"},
    {"specificity", "specificity_lower", "specificity_upper", "specificity"},
    {"ppv", "ppv_lower", "ppv_upper", "PPV"},
    {"npv", "npv_lower", "npv_upper", "NPV"},
    {"lr_positive", "lr_positive_lower", "lr_positive_upper", "LR+"},
    {"lr_negative", "lr_negative_lower", "lr_negative_upper", "LR-"},
    {"dor", "dor_lower", "dor_upper", "odds ratio"},
    {"accuracy", "accuracy_lower", "accuracy_upper", "accuracy"},
    {"balanced_accuracy", "balanced_accuracy_lower", "balanced_accuracy_upper", "balanced accuracy"},
    {"f1", "f1_lower", "f1_upper", "F1"},
    {"mcc", "mcc_lower", "mcc_upper", "MCC"},
    {"youden", "youden_lower", "youden_upper", "Youden"},
    {"kappa", "kappa_lower", "kappa_upper", "kappa"},
}};

constexpr std::array countColumns{
    TableColumn{"true_positive", "TP", CellRole::count, 1},
    TableColumn{"false_positive", "FP", CellRole::count, 1},
    TableColumn{"true_negative", "TN", CellRole::count, 1},
    TableColumn{"false_negative", "FN", CellRole::count, 1},
};

constexpr std::array blockColumns{
    TableColumn{"", "measure", CellRole::name},
    TableColumn{"", "estimate", CellRole::statistic},
    TableColumn{"", "lower", CellRole::statistic},
    TableColumn{"", "upper", CellRole::statistic},
};

/// No closed form of limits holds for mcc.
constexpr bool hasLimits(std::size_t measure) { return measure != static_cast<std::size_t>(Measure::mcc); }

std::vector<TableColumn> measureColumns()
{
    std::vector<TableColumn> columns;
    for (std::size_t m = 0; m < measureCount; ++m) {
        const int part = 2 + static_cast<int>(m);
        columns.push_back({measures[m].name, measures[m].title, CellRole::statistic, part});
        columns.push_back({measures[m].lower, hasLimits(m) ? "lower" : "", CellRole::statistic, part});
        columns.push_back({measures[m].upper, hasLimits(m) ? "upper" : "", CellRole::statistic, part});
    }
    return columns;
}

} // namespace

std::vector<TableColumn> rowColumns(const Analysis& analysis, const CurveOptions& how, RowDetail detail)
{
    // For people only where the heading does not tell it.
    const char* const title = isOnePrevalence(analysis, how) ? "" : "prevalence";
    const TableColumn prevalence{"prevalence", title, CellRole::statistic, 1};
    const std::vector<TableColumn> cases = joined({countColumns, std::span(&prevalence, 1)});
    return detail == RowDetail::counts ? cases : joined({cases, measureColumns()});
}

void addRowCells(const TestResult& test, const CurveOptions& how, const OperatingPoints& points, std::size_t row,
                 RowDetail detail, std::vector<Table::Value>& cells)
{
    for (const auto* const counts :
         {&points.truePositive, &points.falsePositive, &points.trueNegative, &points.falseNegative})
        cells.emplace_back(static_cast<double>((*counts)[row]));
    cells.emplace_back(prevalenceOf(test, how));
    for (std::size_t m = 0; detail == RowDetail::all && m < measureCount; ++m) {
        const auto [value, lower, upper] = points.at(static_cast<Measure>(m), row);
        cells.insert(cells.end(), {value, lower, upper});
    }
}

Document::Part blockOf(const std::string& title, const OperatingPoints& points, std::size_t row)
{
    Table table(blockColumns);
    for (std::size_t m = 0; m < measureCount; ++m) {
        const auto [value, lower, upper] = points.at(static_cast<Measure>(m), row);
        if (hasLimits(m))
            table.addRow({measures[m].title, value, lower, upper});
        else
            table.addRow({measures[m].title, value, "", ""});
    }
    return {"", title, std::move(table)};
}

std::string blockTitle(const Question& question, std::string_view value, const TestResult& test,
                       const OperatingPoints& points, std::size_t row)
{
    return nameOf(question, test.area, value) + ", cut-off "
        + cutOffText(points.cutOffs[row], points.readingOf(test, row));
}

void addRowMethods(const Analysis& analysis, const CurveOptions& how, Document& document)
{
    const Question& question = analysis.question;
    document.heading.push_back("Intervals: " + proportionWord(how)
                               + " for shares and F1, square-and-add (Wilson) for balanced accuracy and Youden, log "
                                 "for ratios, normal for kappa, level "
                               + shortest(question.inference.level));
    const std::string prevalence = prevalenceWords(analysis, how);
    document.heading.push_back(how.prevalence
                                   ? "PPV and NPV: " + prevalence + ", with logit intervals; accuracy, F1, MCC and "
                                       + "kappa: " + prevalenceWords(analysis, {})
                                   : "PPV, NPV, accuracy, F1, MCC and kappa: " + prevalence);
    document.question.emplace_back("proportion", how.proportion);
    document.question.emplace_back("confidence_level", question.inference.level);
    addPrevalenceFact(document.question, how);
}

} // namespace vexroc
