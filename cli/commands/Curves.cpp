#include "cli/commands/Commands.h"
#include "cli/commands/Options.h"
#include "cli/commands/Outcome.h"
#include "cli/words/VisibleText.h"

#include <vexrocproc/arraycalls.h>

#include <CLI/CLI.hpp>

#include <array>
#include <cstddef>
#include <memory>
#include <span>

namespace vexroc {

namespace {

constexpr std::array rocColumns{
    TableColumn{"test", "test", CellRole::name},
    TableColumn{"cut_off", "cut-off", CellRole::measure},
    TableColumn{"one_minus_specificity", "1 - specificity", CellRole::statistic},
    TableColumn{"sensitivity", "sensitivity", CellRole::statistic},
};

constexpr std::array prColumns{
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

/// Gives the rows of a curve back at the end. Throws an analysis error where there are none.
template <typename Result, void (*release)(Result)>
struct Curve {
    Result points;
    explicit Curve(const Result& result) : points(result) { requireRows(result.rows); }
    ~Curve() { release(points); }
    Curve(const Curve&) = delete;
    Curve& operator=(const Curve&) = delete;
};
using RocCurve = Curve<roccurve_res, release_roccurve_res>;
using PrCurve = Curve<prcurve_res, release_prcurve_res>;

/// The points of one kind of curve, test by test. `addPoints(test, cases, table)` adds those of one.
Report runCurves(const Question& question, Findings findings, std::span<const TableColumn> columns,
                 const Surroundings& surroundings, auto addPoints)
{
    const Study study = readStudy(question, std::nullopt, surroundings);
    Report report;
    Table table(question.format, columns);
    for (const std::string& test : question.tests) {
        const Cases cases = study.completeCases({&test, 1});
        addPoints(test, cases, table);
        addCurveNotes(visible(test), cases, report.notes);
    }
    findings.tables.push_back({"points", "", std::move(table)});
    report.text = textOf(findings, report.notes);
    report.file = question.output;
    return report;
}

Report runRoc(const StudyOptions& options, const Surroundings& surroundings)
{
    const Question question = parseQuestion(options);
    const auto addPoints = [&](const std::string& test, const Cases& cases, Table& table) {
        const RocCurve curve(roccurve(cases.states.data(), cases.values[0].data(), cases.count(), nullptr,
                                      question.include, question.larger));
        const std::span rows(curve.points.rows, 3 * static_cast<std::size_t>(curve.points.count));
        for (std::size_t i = 0; i < rows.size(); i += 3)
            table.addRow({test, rows[i], rows[i + 1], rows[i + 2]});
    };
    return runCurves(question,
                     {.format = question.format,
                      .command = "curve",
                      .heading = {"ROC curve", question.heading()},
                      .question = question.facts(),
                      .tables = {}},
                     rocColumns, surroundings, addPoints);
}

Report runPr(const PrOptions& options, const Surroundings& surroundings)
{
    const Question question = parseQuestion(options.study);
    const char* const interpolation = options.keilwagen ? "keilwagen" : "davis-goadrich";
    const auto addPoints = [&](const std::string& test, const Cases& cases, Table& table) {
        const PrCurve curve(prcurve(cases.states.data(), cases.values[0].data(), cases.count(), nullptr,
                                    question.include, question.larger, interpolation));
        for (const prcurve_row& point : std::span(curve.points.rows, static_cast<std::size_t>(curve.points.count)))
            table.addRow({test, point.cutOff, point.recall, point.precision, double(point.interpolated)});
    };
    Findings findings{
        .format = question.format,
        .command = "pr",
        .heading = {"Precision-recall curve", question.heading(), std::string("Interpolation: ") + interpolation},
        .question = question.facts(),
        .tables = {}};
    findings.question.emplace_back("interpolation", interpolation);
    return runCurves(question, std::move(findings), prColumns, surroundings, addPoints);
}

} // namespace

Action addCurve(CLI::App& command)
{
    const auto options = std::make_shared<StudyOptions>();
    addStudyOptions(command, *options);
    command.footer("Example: vexroc curve data.csv --state diagnosis=malignant --test radius_mean --format csv");
    return [options](const Surroundings& surroundings) { return runRoc(*options, surroundings); };
}

Action addPr(CLI::App& command)
{
    const auto options = std::make_shared<PrOptions>();
    addStudyOptions(command, options->study);
    command.add_flag("--keilwagen", options->keilwagen,
                     "Interpolate along false positives (Keilwagen) instead of true positives (Davis, Goadrich)");
    command.footer("Example: vexroc pr data.csv --state diagnosis=malignant --test radius_mean --format csv");
    return [options](const Surroundings& surroundings) { return runPr(*options, surroundings); };
}

} // namespace vexroc
