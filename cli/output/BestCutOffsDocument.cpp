#include "cli/output/InferenceDocuments.h"
#include "cli/output/Sentences.h"
#include "cli/output/inferenceWords.h"
#include "cli/output/operatingRows.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"
#include "cli/words/VisibleText.h"

#include <array>

namespace vexroc {

namespace {

constexpr TableColumn criterionColumn{"criterion", "criterion", CellRole::name};
constexpr std::array choiceColumns{
    TableColumn{"value", "value", CellRole::statistic},
    TableColumn{"chosen", "chosen", CellRole::flag},
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

using BestAnswers = Answers<std::vector<BestCutOffs>>;

/// One row for each tie.
Table bestTable(const Analysis& analysis, const CurveOptions& how, const BestAnswers& found, RowDetail detail)
{
    TableMaker table(analysis.question,
                     perTest(analysis.question,
                             joined({std::span(&criterionColumn, 1), std::span(&cutOffColumn, 1), choiceColumns,
                                     rowColumns(analysis, how, detail)})));
    for (const auto& [value, test, criteria] : found) {
        table.setValue(value);
        for (const BestCutOffs& best : criteria)
            for (std::size_t row = 0; row < best.ties.size(); ++row) {
                std::vector<Table::Value> cells{test->area.test, groupOf(test->area),
                                                best.criterion,  cutOffCell(*test, best.ties.cutOff(row)),
                                                best.value,      double(row == best.chosen)};
                addRowCells(*test, how, best.ties, row, detail, cells);
                table.add(cells);
            }
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
                           cutOffCell(*test, best.ties.cutOff(best.chosen)), best.rate.value, best.rate.lower,
                           best.rate.upper, best.rateError, best.interpolated, best.interval});
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

Document bestCutOffsDocument(const Analysis& analysis, const CurveOptions& how, const BestAnswers& found)
{
    const bool withRates = anyRate(found);
    Document document = documentOn(analysis, "best", "Best cut-offs");
    addRowMethods(analysis, how, document);
    if (withRates)
        addIntervalFacts(document.question, analysis.question, how.interval);
    document.parts.push_back({"best_cut_offs", "", bestTable(analysis, how, found, RowDetail::all), false});
    document.parts.push_back({"", "", bestTable(analysis, how, found, RowDetail::counts)});
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
