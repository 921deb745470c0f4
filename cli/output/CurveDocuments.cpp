#include "cli/output/Documents.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultColumns.h"

#include <limits>

namespace vexroc {

namespace {

constexpr std::array rocColumns{
    testColumn,
    cutOffColumn,
    TableColumn{"one_minus_specificity", "1 - specificity", CellRole::statistic},
    sensitivityColumn,
};

constexpr std::array precisionRecallColumns{testColumn, cutOffColumn, recallColumn, precisionColumn,
                                            interpolatedColumn};

Document pointsDocument(const Question& question, const Results& results, std::string_view command,
                        std::vector<std::string> heading, Table points)
{
    Document document{
        .command = command, .heading = std::move(heading), .question = questionFacts(question, *results.labels)};
    document.parts.push_back({"points", "", std::move(points)});
    return document;
}

/// An interpolated point lies on the way to the next measured one and is told with its cut-off.
std::vector<double> cutOffsOf(const TestResult& test)
{
    std::vector<double> cutOffs(test.precisionRecall.size());
    double next = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = cutOffs.size(); i-- > 0;) {
        const int point = test.precisionRecall.rocPoint[i];
        if (point != PrecisionRecallCurve::none)
            next = test.roc.cutOffs[static_cast<std::size_t>(point)];
        cutOffs[i] = next;
    }
    return cutOffs;
}

} // namespace

Document curveDocument(const Question& question, const Results& results)
{
    Table table(rocColumns);
    for (const auto& [area, roc, precisionRecall, best] : results.tests)
        for (std::size_t i = 0; i < roc.size(); ++i)
            table.addRow({area.test, roc.cutOffs[i], 1.0 - roc.specificity[i], roc.sensitivity[i]});
    return pointsDocument(question, results, "curve", {"ROC curve", questionHeading(question, *results.labels)},
                          std::move(table));
}

Document precisionRecallDocument(const Question& question, const Results& results)
{
    const char* const interpolation = question.alongFalsePositives ? "keilwagen" : "davis-goadrich";
    Table table(precisionRecallColumns);
    for (const TestResult& test : results.tests) {
        const PrecisionRecallCurve& curve = test.precisionRecall;
        const std::vector<double> cutOffs = cutOffsOf(test);
        for (std::size_t i = 0; i < curve.size(); ++i)
            table.addRow(
                {test.area.test, cutOffs[i], curve.recall[i], curve.precision[i], double(curve.interpolated[i])});
    }
    Document document = pointsDocument(question, results, "pr",
                                       {"Precision-recall curve", questionHeading(question, *results.labels),
                                        std::string("Interpolation: ") + interpolation},
                                       std::move(table));
    document.question.emplace_back("interpolation", interpolation);
    return document;
}

} // namespace vexroc
