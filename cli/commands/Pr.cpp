#include "cli/Options.h"
#include "cli/commands/Commands.h"
#include "cli/commands/Outcome.h"
#include "cli/text/Words.h"

#include <vexrocproc/arraycalls.h>

#include <CLI/CLI.hpp>

#include <array>
#include <memory>
#include <span>

namespace vexroc {

namespace {

constexpr std::array columns{
    TableColumn{"test", "test", CellRole::name},
    TableColumn{"cut_off", "cut-off", CellRole::measure},
    TableColumn{"recall", "recall", CellRole::statistic},
    TableColumn{"precision", "precision", CellRole::statistic},
    TableColumn{"interpolated", "interpolated", CellRole::flag},
};

struct PrOptions {
    StudyOptions study;
    bool keilwagen = false;
};

struct Curve {
    prcurve_res points;
    explicit Curve(const prcurve_res& result) : points(result) {}
    ~Curve() { release_prcurve_res(points); }
    Curve(const Curve&) = delete;
    Curve& operator=(const Curve&) = delete;
};

Report runPr(const PrOptions& options, std::istream& standardInput)
{
    const Question question = parseQuestion(options.study);
    const char* const interpolation = options.keilwagen ? "keilwagen" : "davis-goadrich";
    const Study study = readStudy(question, std::nullopt, standardInput);

    Report report;
    Table table(question.format, columns);
    for (const std::string& test : question.tests) {
        const Cases cases = study.completeCases({&test, 1});
        const Curve curve(prcurve(cases.states.data(), cases.values[0].data(), cases.count(), nullptr,
                                   question.include, question.larger, interpolation));
        requireRows(curve.points.rows);
        for (const prcurve_row& point : std::span(curve.points.rows, static_cast<std::size_t>(curve.points.count)))
            table.addRow({test, point.cutOff, point.recall, point.precision, double(point.interpolated)});
        addCurveNotes(visible(test), cases, report.notes);
    }
    report.text = reportText(
        question.format,
        {"Precision-recall curve", question.heading(), std::string("Interpolation: ") + interpolation}, table);
    return report;
}

} // namespace

Action addPr(CLI::App& command)
{
    const auto options = std::make_shared<PrOptions>();
    addStudyOptions(command, options->study);
    command.add_flag("--keilwagen", options->keilwagen,
                     "Interpolate along false positives (Keilwagen) instead of true positives (Davis, Goadrich)");
    command.footer("Example: vexroc pr data.csv --state diagnosis=malignant --test radius_mean --format csv");
    return [options](const Session& session) { return runPr(*options, session.standardInput); };
}

} // namespace vexroc
