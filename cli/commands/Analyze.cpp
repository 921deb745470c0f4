#include "cli/commands/Commands.h"
#include "cli/options/Choice.h"
#include "cli/picture/Plot.h"
#include "cli/picture/ReportPage.h"
#include "cli/study/AnalyzeRequest.h"
#include "cli/study/Answer.h"
#include "cli/study/Slices.h"
#include "cli/system/InterruptGuard.h"
#include "cli/system/OutputFile.h"
#include "cli/system/Progress.h"
#include "cli/words/Failure.h"

#include "host/ColumnRecordIter.h"
#include "host/FunctionListener.h"
#include "vexrocproc/ROCStatusCodes.h"
#include "vexrocproc/RocAlgorithm.h"

#include <CLI/CLI.hpp>

#include <deque>
#include <memory>
#include <optional>
#include <utility>

namespace vexroc {

namespace {

using ROCALG_920::ROCSetting;
using ROCALG_920::RocAlgorithm;
using VexCommon_920::CancelFlag;
using VexCommon_920::FunctionListener;
using VexCommon_920::VexStatus;

/// Runs the analysis, with progress where it is to be shown.
VexStatus buildModel(RocAlgorithm& algorithm, const HostData& data, CancelFlag& cancel,
                     const Surroundings& surroundings)
{
    std::optional<AnalysisProgress> line;
    std::optional<FunctionListener> listener;
    if (surroundings.progress.stream != nullptr) {
        line.emplace(surroundings.progress, data.columns.front().size());
        listener.emplace([&line](VexCommon_920::ProgressReport& report) { line->show(report); });
        algorithm.SetProgressListener(&*listener);
    }
    algorithm.SetCancelPtr(&cancel);
    VexCommon_920::ColumnRecordIter records({data.columns.begin(), data.columns.end()});
    const VexStatus status = algorithm.BuildModel(records);
    algorithm.SetProgressListener(nullptr);
    return status;
}

void requireNotCancelled(bool requested)
{
    if (requested)
        throw cancelled();
}

/// One analysis of all rows of the table.
Answer analyzeRows(const AnalyzeOptions& options, AnalyzeRequest request, DataTable table, CancelFlag& cancel,
                   const Surroundings& surroundings)
{
    HostData data = makeHostData(std::move(table), request.roles);
    ROCSetting setting = settingFor(options, request, data);
    RocAlgorithm algorithm(setting, data.variables);
    const VexStatus status = buildModel(algorithm, data, cancel, surroundings);
    requireNotCancelled(status.GetErrorCode() == ROCALG_920::statusCode::cancelled);
    return answerOf(options, request, data, algorithm, status);
}

Answer analyzeByValue(const AnalyzeOptions& options, const AnalyzeRequest& request, DataTable table, CancelFlag& cancel,
                      const Surroundings& surroundings)
{
    const Slices slices(std::move(table), options.by);
    ValueAnswers answers(options.by);
    for (std::size_t value = 0; value < slices.values().size(); ++value)
        answers.add(slices.values()[value], analyzeRows(options, request, slices.slice(value), cancel, surroundings));
    return answers.take(slices.missing());
}

/// Turns an answer into texts and files.
class Delivery {
public:
    Delivery(const AnalyzeOptions& options, const AnalyzeRequest& request, const Answer& answer)
        : options_(options), request_(request), answer_(answer)
    {
    }

    /// What the program says; without a result, why.
    [[nodiscard]] Report report() const
    {
        Report report;
        report.notes = answer_.notes;
        for (const Warning& warning : answer_.warnings)
            report.warnings.push_back(warning.line());
        if (answer_.failure)
            report.error = "status " + std::to_string(answer_.failure->code) + " " + answer_.failure->name + ": "
                + answer_.failure->sentence;
        else if (options_.display)
            report.text = answer_.display;
        else
            report.text = textOf(findings(request_.question.format, answer_.tables), answer_.notes, answer_.warnings);
        return report;
    }

    /// All files, the report's text among them if it goes to one; or, where one cannot be written or the run is
    /// cancelled meanwhile, none.
    void writeFiles(Report& report, const std::optional<Plot>& plot, const Surroundings& surroundings,
                    CancelFlag& cancel) const
    {
        std::deque<std::string> texts; // a file may refer to its text until it is in place
        std::vector<std::unique_ptr<OutputFile>> files;
        const auto stage = [&](const std::string& path, auto makeText) {
            if (path.empty())
                return;
            requireNotCancelled(cancel.IsCancelRequested());
            texts.push_back(makeText());
            files.push_back(std::make_unique<OutputFile>(path, texts.back()));
        };
        stage(options_.curveFile, [&] { return answer_.curve->str(); });
        stage(options_.prCurveFile, [&] { return answer_.precisionRecall->str(); });
        stage(options_.plotFile, [&] { return plot->draw(drawing(), cancel); });
        stage(options_.reportFile, [&] { return page(surroundings); });
        stage(request_.question.output, [&] { return std::exchange(report.text, ""); });
        requireNotCancelled(cancel.IsCancelRequested());
        for (const auto& file : files)
            file->commit();
    }

private:
    [[nodiscard]] Findings findings(OutputFormat format, const std::vector<Findings::Part>& tables) const
    {
        return {.format = format,
                .command = "analyze",
                .heading = request_.heading(options_),
                .question = request_.facts(options_),
                .tables = tables};
    }

    [[nodiscard]] Drawing drawing() const
    {
        Drawing drawing{.curves = answer_.curves,
                        .level = request_.level,
                        .question = request_.question.heading(),
                        .notes = {"Dot: maximum Kolmogorov-Smirnov distance, the largest Youden index"}};
        if (const std::string note = thinningNote(answer_.curves); !note.empty())
            drawing.notes.push_back("Thinned: " + note);
        if (!answer_.notDrawn.empty())
            drawing.notes.push_back("Limited: " + answer_.notDrawn);
        return drawing;
    }

    [[nodiscard]] std::string page(const Surroundings& surroundings) const
    {
        Findings found = findings(OutputFormat::html, answer_.pageTables);
        found.heading.insert(found.heading.begin() + 1,
                             "Data: " + request_.question.input.name() + "; " + std::to_string(answer_.positive)
                                 + " positive and " + std::to_string(answer_.negative) + " negative cases");
        const Drawing drawn = drawing();
        return ReportPage{.command = surroundings.command,
                          .findings = found,
                          .drawing = drawn,
                          .notes = answer_.notes,
                          .warnings = answer_.warnings}
            .html();
    }

    const AnalyzeOptions& options_;
    const AnalyzeRequest& request_;
    const Answer& answer_;
};

Report runAnalyze(const AnalyzeOptions& options, const Surroundings& surroundings)
{
    AnalyzeRequest request = parseRequest(options);
    std::optional<Plot> plot;
    if (!options.plotFile.empty())
        plot.emplace(options.plotFile);
    if (!options.reportFile.empty())
        ReportPage::requirePossible(options.reportFile);
    // Nothing is there to tidy up while the data are read: until then, an interrupt just ends the program.
    DataTable table = readData(options, request, surroundings);
    CancelFlag cancel;
    const InterruptGuard guard(cancel, surroundings);
    Answer answer = options.by.empty() ? analyzeRows(options, request, std::move(table), cancel, surroundings)
                                       : analyzeByValue(options, request, std::move(table), cancel, surroundings);
    answer.prepareForDrawing();
    const Delivery delivery(options, request, answer);
    Report report = delivery.report();
    if (!answer.failure)
        delivery.writeFiles(report, plot, surroundings, cancel);
    return report;
}

void addGroupOptions(CLI::App& command, AnalyzeOptions& options)
{
    command
        .add_option("--group", options.group,
                    "Column that splits the cases in two groups; needs no more when it "
                    "holds two values")
        ->type_name("COLUMN");
    command.add_option("--select", options.select, "The two values of the group column, in this order")
        ->type_name("VALUE,VALUE");
    command.add_option("--cut", options.cut, "Groups below this value of the group column, and from it on")
        ->type_name("VALUE");
    command.add_flag("--mid-point", options.midPoint, "Groups below and from the middle of the group column's range");
}

void addOutputOptions(CLI::App& command, AnalyzeOptions& options)
{
    command.add_flag("--pr", options.pr, "Precision-recall curves");
    command.add_flag("--keilwagen", options.keilwagen,
                     "Interpolate them along false positives (Keilwagen) instead of true positives (Davis, Goadrich)");
    command.add_flag("--no-curve", options.noCurve, "Areas only, without the points of the ROC curves");
    command.add_flag("--display", options.display, "Print the component's own text instead of tables");
    command.add_flag("--best", options.best, "The cut-offs with the largest Youden index, with all ties");
    command.add_option("--plot", options.plotFile, "Draw the curves into this file: .svg, .pdf or .png; needs gnuplot")
        ->type_name("FILE");
    command.add_option("--report", options.reportFile, "Write a page to explore the curves, with all tables")
        ->type_name("FILE.html");
    command.add_option("--curve", options.curveFile, "Write the points of the ROC curves to this file, as CSV")
        ->type_name("FILE");
    command.add_option("--pr-curve", options.prCurveFile, "Write the points of the precision-recall curves, as CSV")
        ->type_name("FILE");
}

} // namespace

Action addAnalyze(CLI::App& command)
{
    const auto options = std::make_shared<AnalyzeOptions>();
    addStudyOptions(command, options->study);
    command.get_option("--test")->description("Test variables; or the word all: every column of numbers without "
                                              "another part");
    addGroupOptions(command, *options);
    command
        .add_option("--weight", options->weight,
                    "Column with the number of cases that a row stands for; changes "
                    "the weighted counts only")
        ->type_name("COLUMN");
    command.add_option("--by", options->by, "One analysis per value of this column, in ascending order")
        ->type_name("COLUMN");
    addChoice(command, "--compare", options->compare, {"paired", "independent"},
              "paired: all tests on the same cases; independent: each test between the groups");
    addLevelOption(command, options->level);
    addBiNegativeOption(command, options->biNegative);
    addOutputOptions(command, *options);
    command.footer("Example: vexroc analyze data.csv --state diagnosis=malignant --test all --compare paired\n"
                   "         vexroc analyze data.csv --state disease=1 --test marker --group age --cut 50 --compare "
                   "independent");
    return [options](const Surroundings& surroundings) { return runAnalyze(*options, surroundings); };
}

} // namespace vexroc
