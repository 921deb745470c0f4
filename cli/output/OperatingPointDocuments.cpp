#include "cli/output/InferenceDocuments.h"
#include "cli/output/Sentences.h"
#include "cli/output/inferenceWords.h"
#include "cli/output/questionWords.h"
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
    TableColumn{"prevalence", "prevalence", CellRole::statistic, 1},
};

constexpr TableColumn criterionColumn{"criterion", "criterion", CellRole::name};
constexpr std::array choiceColumns{
    TableColumn{"value", "value", CellRole::statistic},
    TableColumn{"chosen", "chosen", CellRole::flag},
};

constexpr std::array longColumns{
    TableColumn{"", "measure", CellRole::name},
    TableColumn{"", "estimate", CellRole::statistic},
    TableColumn{"", "lower", CellRole::statistic},
    TableColumn{"", "upper", CellRole::statistic},
};

constexpr std::array rateColumns{
    TableColumn{"rate", "rate", CellRole::name},
    cutOffColumn,
    TableColumn{"reached", "reached", CellRole::statistic},
    TableColumn{"lower", "lower", CellRole::statistic},
    TableColumn{"upper", "upper", CellRole::statistic},
    TableColumn{"std_error", "SE", CellRole::statistic},
    TableColumn{"interpolated", "interpolated", CellRole::statistic},
    TableColumn{"interval", "", CellRole::name},
};

std::vector<TableColumn> measureColumns()
{
    std::vector<TableColumn> columns;
    for (std::size_t m = 0; m < measureCount; ++m) {
        const int part = 2 + static_cast<int>(m);
        const bool hasLimits = m != static_cast<std::size_t>(Measure::mcc);
        columns.push_back({measures[m].name, measures[m].title, CellRole::statistic, part});
        columns.push_back({measures[m].lower, hasLimits ? "lower" : "", CellRole::statistic, part});
        columns.push_back({measures[m].upper, hasLimits ? "upper" : "", CellRole::statistic, part});
    }
    return columns;
}

CutOffCell cellOf(const TestResult& test, const OperatingPoints& points, std::size_t row)
{
    return cutOffCell(test, points.cutOff(row));
}

void addCounts(const OperatingPoints& points, std::size_t row, double prevalence, std::vector<Table::Value>& cells)
{
    for (const auto* const counts :
         {&points.truePositive, &points.falsePositive, &points.trueNegative, &points.falseNegative})
        cells.emplace_back(static_cast<double>((*counts)[row]));
    cells.emplace_back(prevalence);
}

void addMeasures(const OperatingPoints& points, std::size_t row, std::vector<Table::Value>& cells)
{
    for (std::size_t m = 0; m < measureCount; ++m) {
        const auto [value, lower, upper] = points.at(static_cast<Measure>(m), row);
        cells.insert(cells.end(), {value, lower, upper});
    }
}

/// One row a measure: what a reader asks of few cut-offs.
void addLong(const std::vector<Table::Value>& lead, const OperatingPoints& points, std::size_t row, TableMaker& table)
{
    for (std::size_t m = 0; m < measureCount; ++m) {
        const auto [value, lower, upper] = points.at(static_cast<Measure>(m), row);
        std::vector<Table::Value> cells = lead;
        cells.insert(cells.end(), {measures[m].title, value, lower, upper});
        table.add(cells);
    }
}

/// Lines and facts about how rows of measures are made.
void addMethods(const Analysis& analysis, const CurveOptions& how, Document& document)
{
    const Question& question = analysis.question;
    const std::string shares = proportionWord(how);
    document.heading.push_back("Intervals: " + shares + " for shares and F1, square-and-add (" + shares
                               + ") for balanced accuracy and Youden, log for ratios, normal for kappa, level "
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

/// Every number of each row, for programs, and for people where there are many rows.
Table pointTable(const Analysis& analysis, const CurveOptions& how, const Answers<OperatingPoints>& found)
{
    TableMaker table(analysis.question,
                     perTest(analysis.question, joined({std::span(&cutOffColumn, 1), countColumns, measureColumns()})));
    std::vector<Table::Value> cells;
    for (const auto& [value, test, points] : found) {
        table.setValue(value);
        for (std::size_t row = 0; row < points.size(); ++row) {
            cells = {test->area.test, groupOf(test->area), cellOf(*test, points, row)};
            addCounts(points, row, prevalenceOf(*test, how), cells);
            addMeasures(points, row, cells);
            table.add(cells);
        }
    }
    return table.take();
}

/// The numbers of cases alone.
Table countTable(const Analysis& analysis, const CurveOptions& how, const Answers<OperatingPoints>& found)
{
    TableMaker table(analysis.question,
                     perTest(analysis.question, joined({std::span(&cutOffColumn, 1), countColumns})));
    for (const auto& [value, test, points] : found) {
        table.setValue(value);
        for (std::size_t row = 0; row < points.size(); ++row) {
            std::vector<Table::Value> cells{test->area.test, groupOf(test->area), cellOf(*test, points, row)};
            addCounts(points, row, prevalenceOf(*test, how), cells);
            table.add(cells);
        }
    }
    return table.take();
}

Table longTable(const Analysis& analysis, const Answers<OperatingPoints>& found)
{
    TableMaker table(analysis.question, perTest(analysis.question, joined({std::span(&cutOffColumn, 1), longColumns})));
    for (const auto& [value, test, points] : found) {
        table.setValue(value);
        for (std::size_t row = 0; row < points.size(); ++row)
            addLong({test->area.test, groupOf(test->area), cellOf(*test, points, row)}, points, row, table);
    }
    return table.take();
}

// Best cut-offs ----------------------------------------------------------------------------------------------------

using BestAnswers = Answers<std::vector<BestCutOffs>>;

/// One row for each tie: `addRow(cells, points, row, test)` completes what leads it.
Table bestTable(const Analysis& analysis, const BestAnswers& found, std::span<const TableColumn> columns, auto addRow)
{
    const TableColumn cutOff = cutOffColumn;
    TableMaker table(analysis.question,
                     perTest(analysis.question,
                             joined({std::span(&criterionColumn, 1), std::span(&cutOff, 1), choiceColumns, columns})));
    for (const auto& [value, test, criteria] : found) {
        table.setValue(value);
        for (const BestCutOffs& best : criteria)
            for (std::size_t row = 0; row < best.ties.size(); ++row) {
                std::vector<Table::Value> cells{test->area.test, groupOf(test->area),
                                                best.criterion,  cellOf(*test, best.ties, row),
                                                best.value,      double(row == best.chosen)};
                addRow(best.ties, row, *test, cells);
                table.add(cells);
            }
    }
    return table.take();
}

Table bestForPrograms(const Analysis& analysis, const CurveOptions& how, const BestAnswers& found)
{
    return bestTable(analysis, found, joined({countColumns, measureColumns()}),
                     [&](const OperatingPoints& ties, std::size_t row, const TestResult& test, auto& cells) {
                         addCounts(ties, row, prevalenceOf(test, how), cells);
                         addMeasures(ties, row, cells);
                     });
}

Table bestForPeople(const Analysis& analysis, const CurveOptions& how, const BestAnswers& found)
{
    return bestTable(analysis, found, countColumns,
                     [&](const OperatingPoints& ties, std::size_t row, const TestResult& test, auto& cells) {
                         addCounts(ties, row, prevalenceOf(test, how), cells);
                     });
}

/// The chosen cut-offs with all their measures.
Table chosenTable(const Analysis& analysis, const BestAnswers& found)
{
    TableMaker table(
        analysis.question,
        perTest(analysis.question, joined({std::span(&criterionColumn, 1), std::span(&cutOffColumn, 1), longColumns})));
    for (const auto& [value, test, criteria] : found) {
        table.setValue(value);
        for (const BestCutOffs& best : criteria)
            if (best.chosen != BestCutOffs::npos)
                addLong({test->area.test, groupOf(test->area), best.criterion, cellOf(*test, best.ties, best.chosen)},
                        best.ties, best.chosen, table);
    }
    return table.take();
}

/// The rates that criteria with a share ask for.
Table rateTable(const Analysis& analysis, const BestAnswers& found)
{
    TableMaker table(analysis.question,
                     perTest(analysis.question, joined({std::span(&criterionColumn, 1), rateColumns})));
    for (const auto& [value, test, criteria] : found) {
        table.setValue(value);
        for (const BestCutOffs& best : criteria)
            if (best.fixesRate() && best.chosen != BestCutOffs::npos)
                table.add({test->area.test, groupOf(test->area), best.criterion, best.rateName(),
                           cellOf(*test, best.ties, best.chosen), best.rate.value, best.rate.lower, best.rate.upper,
                           best.rateError, best.interpolated, best.interval});
    }
    return table.take();
}

bool anyRate(const BestAnswers& found)
{
    for (const auto& [value, test, criteria] : found)
        for (const BestCutOffs& best : criteria)
            if (best.fixesRate())
                return true;
    return false;
}

} // namespace

Document operatingPointsDocument(const Analysis& analysis, const CurveOptions& how, bool isNamed,
                                 const Answers<OperatingPoints>& found)
{
    Document document =
        documentOn(analysis, "points", isNamed ? "Operating points" : "Operating points at every cut-off of the curve");
    addMethods(analysis, how, document);
    document.parts.push_back({"points", "", pointTable(analysis, how, found), !isNamed});
    if (!isNamed)
        return document;
    document.parts.push_back({"", "", countTable(analysis, how, found)});
    document.parts.push_back({"", "", longTable(analysis, found)});
    for (const auto& curve : found)
        for (std::size_t row = 0; row < curve.answer.size(); ++row)
            document.sentences.push_back(sentenceOn(analysis.question, how, curve, row));
    return document;
}

Document bestCutOffsDocument(const Analysis& analysis, const CurveOptions& how, const BestAnswers& found)
{
    const bool withRates = anyRate(found);
    Document document = documentOn(analysis, "best", "Best cut-offs");
    addMethods(analysis, how, document);
    if (withRates)
        addIntervalFacts(document.question, analysis.question, how.interval);
    document.parts.push_back({"best_cut_offs", "", bestForPrograms(analysis, how, found), false});
    document.parts.push_back({"", "", bestForPeople(analysis, how, found)});
    document.parts.push_back({"", "The chosen cut-offs", chosenTable(analysis, found)});
    if (withRates)
        document.parts.push_back(
            {"rates",
             "Rates at the fixed share of the other. " + intervalHeading(analysis.question.inference, how.interval),
             rateTable(analysis, found)});
    for (const auto& curve : found)
        for (const BestCutOffs& best : curve.answer)
            document.sentences.push_back(sentenceOn(analysis.question, how, curve, best));
    return document;
}

} // namespace vexroc
