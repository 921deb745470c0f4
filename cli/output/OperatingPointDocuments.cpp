#include "cli/output/InferenceDocuments.h"
#include "cli/output/Sentences.h"
#include "cli/output/inferenceWords.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

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

constexpr std::array blockColumns{
    TableColumn{"", "measure", CellRole::name},
    TableColumn{"", "estimate", CellRole::statistic},
    TableColumn{"", "lower", CellRole::statistic},
    TableColumn{"", "upper", CellRole::statistic},
};

constexpr std::array rateColumns{
    TableColumn{"rate", "", CellRole::name}, // the criterion says it to people
    cutOffColumn,
    TableColumn{"reached", "reached", CellRole::statistic, 1},
    TableColumn{"lower", "lower", CellRole::statistic, 1},
    TableColumn{"upper", "upper", CellRole::statistic, 1},
    TableColumn{"std_error", "SE", CellRole::statistic, 2},
    TableColumn{"interpolated", "interpolated", CellRole::statistic, 2},
    TableColumn{"interval", "", CellRole::name},
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

CutOffCell cellOf(const TestResult& test, const OperatingPoints& points, std::size_t row)
{
    return cutOffCell(test, points.cutOff(row));
}

void addCounts(const OperatingPoints& points, std::size_t row, std::vector<Table::Value>& cells)
{
    for (const auto* const counts :
         {&points.truePositive, &points.falsePositive, &points.trueNegative, &points.falseNegative})
        cells.emplace_back(static_cast<double>((*counts)[row]));
}

void addMeasures(const OperatingPoints& points, std::size_t row, std::vector<Table::Value>& cells)
{
    for (std::size_t m = 0; m < measureCount; ++m) {
        const auto [value, lower, upper] = points.at(static_cast<Measure>(m), row);
        cells.insert(cells.end(), {value, lower, upper});
    }
}

/// One cut-off, a measure a line: what a reader asks of few of them.
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

/// "radius_mean where sex = female, cut-off 15".
std::string blockTitle(const Question& question, std::string_view value, const TestResult& test,
                       const OperatingPoints& points, std::size_t row)
{
    return nameOf(question, test.area, value) + ", cut-off "
        + cutOffText(points.cutOffs[row], test.readingOf(points.cutOff(row)));
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
            addCounts(points, row, cells);
            cells.emplace_back(prevalenceOf(*test, how));
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
            addCounts(points, row, cells);
            cells.emplace_back(prevalenceOf(*test, how));
            table.add(cells);
        }
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
                         addCounts(ties, row, cells);
                         cells.emplace_back(prevalenceOf(test, how));
                         addMeasures(ties, row, cells);
                     });
}

Table bestForPeople(const Analysis& analysis, const BestAnswers& found)
{
    return bestTable(analysis, found, std::span(countColumns).first(4),
                     [&](const OperatingPoints& ties, std::size_t row, const TestResult&, auto& cells) {
                         addCounts(ties, row, cells);
                     });
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
    for (const auto& curve : found)
        for (std::size_t row = 0; row < curve.answer.size(); ++row) {
            const std::string title = blockTitle(analysis.question, curve.value, *curve.test, curve.answer, row);
            document.parts.push_back(blockOf(title, curve.answer, row));
            document.sentences.push_back(sentenceOn(analysis.question, how, curve, row));
        }
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
    document.parts.push_back({"", "", bestForPeople(analysis, found)});
    if (withRates) {
        std::string interval = intervalHeading(analysis.question.inference, how.interval);
        interval.front() = 'i';
        document.parts.push_back(
            {"rates", "Rates where the criterion fixes the other one; " + interval, rateTable(analysis, found)});
    }
    for (const auto& curve : found)
        for (const BestCutOffs& best : curve.answer) {
            document.sentences.push_back(sentenceOn(analysis.question, how, curve, best));
            if (best.chosen == BestCutOffs::npos)
                continue;
            const std::string title = blockTitle(analysis.question, curve.value, *curve.test, best.ties, best.chosen);
            document.parts.push_back(blockOf(title + ", by " + visible(best.criterion), best.ties, best.chosen));
        }
    return document;
}

} // namespace vexroc
