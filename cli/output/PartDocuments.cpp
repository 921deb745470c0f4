#include "cli/output/InferenceDocuments.h"
#include "cli/output/Sentences.h"
#include "cli/output/inferenceWords.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"

#include <algorithm>
#include <array>

// Parts of the area, the area of precision and recall, net benefit: one row or a few for each curve.
namespace vexroc {

namespace {

constexpr std::array caseColumns{
    TableColumn{"positive", "positive", CellRole::count, 1},
    TableColumn{"negative", "negative", CellRole::count, 1},
    TableColumn{"left_out", "left out", CellRole::count, 1, true},
};

constexpr std::array partialColumns{
    TableColumn{"rate", "", CellRole::name},
    TableColumn{"from", "", CellRole::measure},
    TableColumn{"to", "", CellRole::measure},
    TableColumn{"partial_area", "partial area", CellRole::statistic, 2},
    TableColumn{"std_error", "SE", CellRole::statistic, 2},
    TableColumn{"lower", "lower", CellRole::statistic, 2},
    TableColumn{"upper", "upper", CellRole::statistic, 2},
    TableColumn{"standardized", "standardized", CellRole::statistic, 3},
    TableColumn{"standardized_error", "SE", CellRole::statistic, 3},
    TableColumn{"standardized_lower", "lower", CellRole::statistic, 3},
    TableColumn{"standardized_upper", "upper", CellRole::statistic, 3},
    TableColumn{"interval", "", CellRole::name},
};

/// `told`: the heading says the prevalence; `lowest`: the lowest area is defined.
std::array<TableColumn, 7> precisionRecallColumns(bool told, bool lowest)
{
    return {
        TableColumn{"pr_area", "area", CellRole::statistic, 2},
        TableColumn{"lower", "lower", CellRole::statistic, 2},
        TableColumn{"upper", "upper", CellRole::statistic, 2},
        TableColumn{"rule", "", CellRole::name},
        TableColumn{"interval", "", CellRole::name},
        TableColumn{"prevalence", told ? "" : "prevalence", CellRole::statistic, 3},
        TableColumn{"lowest", lowest ? "lowest possible" : "", CellRole::statistic, 3},
    };
}

/// `told`: the heading says the prevalence; `stated`: the user does.
std::array<TableColumn, 11> benefitColumns(bool told, bool stated)
{
    return {
        TableColumn{"threshold", "threshold", CellRole::cutOff},
        TableColumn{"net_benefit", "net benefit", CellRole::statistic},
        TableColumn{"treat_all", "treat all", CellRole::statistic},
        TableColumn{"treat_none", "treat none", CellRole::statistic},
        TableColumn{"true_positive", "TP", CellRole::count, 1},
        TableColumn{"false_positive", "FP", CellRole::count, 1},
        TableColumn{"positive", "positive", CellRole::count, 1},
        TableColumn{"negative", "negative", CellRole::count, 1},
        TableColumn{"prevalence", told ? "" : "prevalence", CellRole::statistic, 2},
        TableColumn{"mean_score", "mean score", CellRole::statistic, 2},
        TableColumn{"observed", stated ? "prevalence" : "observed share", CellRole::statistic, 2},
    };
}

/// The table of `columns` in which `addRows(test, answer, table)` puts the rows of each curve.
template <class Answer>
Table tableOf(const Analysis& analysis, const Answers<Answer>& found, std::span<const TableColumn> columns,
              auto addRows)
{
    TableMaker table(analysis.question, perTest(analysis.question, columns));
    for (const auto& [value, test, answer] : found) {
        table.setValue(value);
        addRows(*test, answer, table);
    }
    return table.take();
}

/// By what the limits are; where only some are by another interval than the one asked for, that one is told too.
template <class Answer>
std::string intervalHeadingOf(const Analysis& analysis, const CurveOptions& how, const Answers<Answer>& found)
{
    std::vector<std::string> used;
    for (const auto& curve : found)
        if (std::ranges::find(used, curve.answer.interval) == used.end())
            used.push_back(curve.answer.interval);
    const Inference& asked = analysis.question.inference;
    if (used.size() == 1)
        return intervalHeading(asked, used.front());
    return intervalHeading(asked, how.interval)
        + (used.empty() ? "" : "; " + intervalInWords("bootstrap") + " where that is not defined");
}

std::vector<Table::Value> leadOf(const Area& area)
{
    return {area.test, groupOf(area), double(area.positive), double(area.negative), double(area.leftOut)};
}

Table precisionRecallTable(const Analysis& analysis, const CurveOptions& how, const std::string& rule,
                           const Answers<PrecisionRecallArea>& found)
{
    const bool hasLowest = !how.prevalence && rule != "trapezoid";
    return tableOf(analysis, found,
                   joined({caseColumns, precisionRecallColumns(isOnePrevalence(analysis, how), hasLowest)}),
                   [&](const TestResult& test, const PrecisionRecallArea& a, TableMaker& table) {
                       std::vector<Table::Value> cells = leadOf(test.area);
                       cells.insert(cells.end(),
                                    {a.area.value, a.area.lower, a.area.upper, rule, a.interval,
                                     prevalenceOf(test, how), a.lowest});
                       table.add(cells);
                   });
}

std::string precisionRecallTitle(const std::string& rule)
{
    return "Area under the precision-recall curve, rule: "
        + (rule == "integral"   ? "integral of the interpolated curve"
               : rule == "step" ? "step (average precision)"
                                : rule);
}

} // namespace

Document partialAreaDocument(const Analysis& analysis, const CurveOptions& how, const Band& band,
                             const Answers<PartialArea>& found)
{
    Document document =
        documentOn(analysis, "partial",
                   std::string("Partial area ") + (band.rate == "fpr" ? "under" : "right of") + " the ROC curve");
    document.heading.insert(document.heading.begin() + 1, "Band: " + bandWords(band));
    document.heading.push_back(intervalHeadingOf(analysis, how, found)
                               + "; standard error: from components, as DeLong's");
    addIntervalFacts(document.question, analysis.question, how.interval);
    document.parts.push_back({"partial_areas", "",
                              tableOf(analysis, found, joined({caseColumns, partialColumns}),
                                      [&](const TestResult& test, const PartialArea& a, TableMaker& table) {
                                          std::vector<Table::Value> cells = leadOf(test.area);
                                          cells.insert(cells.end(),
                                                       {band.rate, band.from, band.to, a.area.value, a.stdError,
                                                        a.area.lower, a.area.upper, a.standardized.value,
                                                        a.standardizedError, a.standardized.lower, a.standardized.upper,
                                                        a.interval});
                                          table.add(cells);
                                      })});
    for (const auto& curve : found)
        document.sentences.push_back(sentenceOn(analysis.question, band, curve));
    return document;
}

Document precisionRecallAreaDocument(const Analysis& analysis, const CurveOptions& how, const std::string& rule,
                                     const Answers<PrecisionRecallArea>& found)
{
    Document document = documentOn(analysis, "pr", precisionRecallTitle(rule));
    document.heading.push_back(intervalHeadingOf(analysis, how, found) + "; " + prevalenceWords(analysis, how));
    document.question.emplace_back("rule", rule);
    addIntervalFacts(document.question, analysis.question, how.interval);
    addPrevalenceFact(document.question, how);
    document.parts.push_back({"pr_areas", "", precisionRecallTable(analysis, how, rule, found)});
    for (const auto& curve : found)
        document.sentences.push_back(sentenceOn(analysis.question, how, rule, curve));
    return document;
}

Document::Part precisionRecallAreaPart(const Analysis& analysis)
{
    const CurveOptions how{.interval = precisionRecallInterval};
    std::string interval = intervalHeading(analysis.question.inference, how.interval);
    interval.front() = 'i';
    return {"pr_areas",
            precisionRecallTitle(precisionRecallRule) + "; " + interval + "; " + prevalenceWords(analysis, how),
            precisionRecallTable(analysis, how, precisionRecallRule, analysis.precisionRecallAreas)};
}

Document netBenefitDocument(const Analysis& analysis, const CurveOptions& how, const Answers<NetBenefit>& found)
{
    Document document = documentOn(analysis, "benefit", "Net benefit at thresholds of risk");
    document.heading.push_back("Scores are taken for probabilities of the positive state; net benefit "
                               + prevalenceWords(analysis, how));
    addPrevalenceFact(document.question, how);
    const auto addRows = [&](const TestResult& test, const NetBenefit& b, TableMaker& table) {
        for (std::size_t i = 0; i < b.thresholds.size(); ++i)
            table.add({test.area.test, groupOf(test.area), CutOffCell{b.thresholds[i], {}}, b.model[i], b.treatAll[i],
                       0.0, double(b.truePositive[i]), double(b.falsePositive[i]), double(test.area.positive),
                       double(test.area.negative), prevalenceOf(test, how), b.meanScore, b.observed});
    };
    document.parts.push_back(
        {"net_benefits", "",
         tableOf(analysis, found, benefitColumns(isOnePrevalence(analysis, how), how.prevalence.has_value()),
                 addRows)});
    return document;
}

} // namespace vexroc
