#include "cli/output/Documents.h"
#include "cli/output/questionWords.h"
#include "cli/output/resultTables.h"

#include <array>

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

} // namespace

Document curveDocument(const Question& question, const Results& results)
{
    Table table(rocColumns);
    for (const TestResult& test : results.tests)
        for (std::size_t i = 0; i < test.roc.size(); ++i) {
            const CutOff point = test.roc.at(i);
            table.addRow({test.area.test, cutOffCell(test, point), 1.0 - point.specificity, point.sensitivity});
        }
    return pointsDocument(question, results, "curve", {"ROC curve", questionHeading(question, *results.labels)},
                          std::move(table));
}

Document precisionRecallDocument(const Question& question, const Results& results)
{
    const char* const interpolation = question.alongFalsePositives ? "keilwagen" : "davis-goadrich";
    Table table(precisionRecallColumns);
    for (const TestResult& test : results.tests) {
        const PrecisionRecallCurve& curve = test.precisionRecall;
        for (std::size_t i = 0; i < curve.size(); ++i)
            table.addRow({test.area.test, precisionRecallCutOff(test, i), curve.recall[i], curve.precision[i],
                          double(curve.interpolated[i])});
    }
    Document document = pointsDocument(question, results, "pr",
                                       {"Precision-recall curve", questionHeading(question, *results.labels),
                                        std::string("Interpolation: ") + interpolation},
                                       std::move(table));
    document.question.emplace_back("interpolation", interpolation);
    return document;
}

} // namespace vexroc
