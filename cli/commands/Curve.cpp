#include "cli/Options.h"
#include "cli/commands/Commands.h"
#include "cli/commands/Outcome.h"
#include "cli/text/Words.h"

#include <vexrocproc/arraycalls.h>

#include <CLI/CLI.hpp>

#include <array>
#include <cstddef>
#include <memory>
#include <span>

namespace vexroc {

namespace {

constexpr std::array columns{
    TableColumn{"test", "test", CellRole::name},
    TableColumn{"cut_off", "cut-off", CellRole::measure},
    TableColumn{"one_minus_specificity", "1 - specificity", CellRole::statistic},
    TableColumn{"sensitivity", "sensitivity", CellRole::statistic},
};

struct Curve {
    roccurve_res points;
    explicit Curve(const roccurve_res& result) : points(result) {}
    ~Curve() { release_roccurve_res(points); }
    Curve(const Curve&) = delete;
    Curve& operator=(const Curve&) = delete;
};

Report runCurve(const StudyOptions& options, std::istream& standardInput)
{
    const Question question = parseQuestion(options);
    const Study study = readStudy(question, std::nullopt, standardInput);

    Report report;
    Table table(question.format, columns);
    for (const std::string& test : question.tests) {
        const Cases cases = study.completeCases({&test, 1});
        const Curve curve(roccurve(cases.states.data(), cases.values[0].data(), cases.count(), nullptr,
                                   question.include, question.larger));
        requireRows(curve.points.rows);
        const std::span rows(curve.points.rows, 3 * static_cast<std::size_t>(curve.points.count));
        for (std::size_t i = 0; i < rows.size(); i += 3)
            table.addRow({test, rows[i], rows[i + 1], rows[i + 2]});
        addCurveNotes(visible(test), cases, report.notes);
    }
    report.text = reportText(question.format, {"ROC curve", question.heading()}, table);
    return report;
}

} // namespace

Action addCurve(CLI::App& command)
{
    const auto options = std::make_shared<StudyOptions>();
    addStudyOptions(command, *options);
    command.footer("Example: vexroc curve data.csv --state diagnosis=malignant --test radius_mean --format csv");
    return [options](const Session& session) { return runCurve(*options, session.standardInput); };
}

} // namespace vexroc
