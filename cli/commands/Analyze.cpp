#include "cli/commands/AnalysisWatch.h"
#include "cli/commands/AnalyzeOptions.h"
#include "cli/commands/Commands.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/commands/SlicedOptions.h"
#include "cli/output/InferenceDocuments.h"
#include "cli/output/TableForms.h"
#include "cli/output/questionWords.h"
#include "cli/picture/Picture.h"
#include "cli/picture/ReportPage.h"
#include "cli/picture/curvesOf.h"
#include "cli/study/remarksOn.h"
#include "cli/system/OutputFiles.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"
#include "cli/words/version.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace vexroc {

namespace {

std::string statusLine(const RunMessage& failure)
{
    return "status " + std::to_string(failure.code) + " " + failure.name + ": " + failure.sentence;
}

/// The table of an analysis. With all tests asked for, it says which they are.
DataTable readAnalysisTable(AnalyzeTask& task, const Surroundings& surroundings)
{
    Question& question = task.question;
    question.call = surroundings.call;
    const std::vector<ColumnRequest> requests = question.columns();
    DataTable table =
        readTable(task.input, surroundings, requests, task.allTests ? OtherColumns::numeric : OtherColumns::skipped);
    question.settle(table);
    keepStateApart(task);
    if (task.allTests)
        for (const DataColumn& column : table.columns)
            if (column.request.kind == ColumnKind::numbers
                && std::ranges::find(requests, column.request) == requests.end())
                question.tests.push_back(column.request.name);
    return table;
}

Analysis analyze(AnalyzeTask& task, DataTable table, AnalysisWatch& watch)
{
    const Watch asked = watch.watch(&task.remarks);
    Analysis analysis = studySlices(task, std::move(table), asked);
    analysis.bestTable = task.bestTable;
    const CurveOptions how{.interval = precisionRecallInterval};
    if (task.precisionRecallAreas)
        askEach(analysis, asked, [&](std::string_view value, const TestResult& test, const Watch& one) {
            const CurveInference inference(test, task.question, how, one);
            analysis.precisionRecallAreas.push_back({value, &test, inference.precisionRecall(precisionRecallRule)});
        });
    watch.endProgress();
    if (analysis.bestTable && analysis.anyResult())
        task.remarks.add("best-on-same-data");
    return analysis;
}

std::vector<DrawnCurve> curvesOf(const Analysis& analysis, bool rectangles)
{
    std::vector<DrawnCurve> curves;
    for (const auto& [value, results] : analysis.values) {
        const std::string& by = analysis.question.by;
        addDrawnCurves(results, by.empty() ? "" : visible(by) + " = " + visible(value) + ": ", curves,
                       rectangles ? &analysis.question : nullptr);
    }
    return curves;
}

/// Turns an analysis into texts and files.
class AnalysisFiles {
public:
    AnalysisFiles(AnalyzeTask& task, const Analysis& analysis)
        : task_(task), analysis_(analysis), document_(analysisDocument(analysis))
    {
        for (const ValueResults& value : analysis.values)
            methods_.add(value.results);
        if (task.isDrawn()) {
            curves_ = curvesOf(analysis, task.rectangles);
            notDrawn_ = prepareForDrawing(curves_);
            if (!notDrawn_.empty())
                task.remarks.add("not-drawn", "", notDrawn_);
        }
    }

    /// What the program says; without a result, why.
    [[nodiscard]] Report report(const Surroundings& surroundings) const
    {
        Report report = reportOf(task_, document_, surroundings);
        report.file.clear(); // written with the other files, or not at all
        if (const std::optional<RunMessage> failure = analysis_.failure())
            report.error = statusLine(*failure);
        else if (task_.isDrawn() && curves_.empty())
            report.error = "no curve to draw: " + whyNoCurve();
        return report;
    }

    /// All files, the report's text among them if it goes to one; or, where one cannot be written or the run is
    /// cancelled meanwhile, none.
    void write(Report& report, const Surroundings& surroundings, AnalysisWatch& watch) const
    {
        OutputFiles files;
        const auto stage = [&](const std::string& path, auto makeText) {
            if (path.empty())
                return;
            watch.requireNotCancelled();
            files.add(path, makeText());
        };
        report.stageFiles(files);
        stage(task_.files.curve, [&] { return csvOf(curvePoints(analysis_)); });
        stage(task_.files.precisionRecall, [&] { return csvOf(precisionRecallPoints(analysis_)); });
        stage(task_.picture.file(),
              [&] { return task_.picture.bytesOf(svgPicture(drawing(), task_.picture.style())); });
        stage(task_.files.report, [&] { return page(surroundings); });
        stage(task_.output, [&] { return std::exchange(report.text, ""); });
        watch.requireNotCancelled();
        files.commit();
        report.folder.clear(); // written
    }

private:
    static std::string csvOf(const Table& table)
    {
        std::string text;
        writeCsv(table, text);
        return text;
    }

    [[nodiscard]] std::string whyNoCurve() const
    {
        bool positive = false;
        bool negative = false;
        for (const ValueResults& value : analysis_.values)
            for (const TestResult& test : value.results.tests) {
                positive |= test.area.positive > 0;
                negative |= test.area.negative > 0;
            }
        return positive && negative ? "no test has both positive and negative cases"
            : positive              ? "there is no negative case"
            : negative              ? "there is no positive case"
                                    : "there is no case";
    }

    [[nodiscard]] Drawing drawing() const
    {
        Drawing drawing{.curves = curves_,
                        .interval = intervalOfAreas(task_.question.inference),
                        .question = questionHeading(task_.question, *analysis_.labels),
                        .notes = {"Dot: maximum Kolmogorov-Smirnov distance, the largest Youden index",
                                  areaHeading(task_.question, methods_)}};
        if (task_.rectangles)
            drawing.notes.push_back("Shaded: " + readable(100.0 * task_.question.inference.level, CellRole::measure)
                                    + " % rectangles of sensitivity and specificity (Wilson), point by point");
        if (const std::string note = thinningNote(curves_); !note.empty())
            drawing.notes.push_back("Thinned: " + note);
        if (!notDrawn_.empty())
            drawing.notes.push_back("Limited: " + notDrawn_);
        return drawing;
    }

    [[nodiscard]] std::string page(const Surroundings& surroundings) const
    {
        std::vector<std::string> heading = document_.heading;
        heading.insert(heading.begin() + 1,
                       "Data: " + task_.input.name() + "; " + std::to_string(analysis_.cases(&RowCounts::positive))
                           + " positive and " + std::to_string(analysis_.cases(&RowCounts::negative))
                           + " negative cases");
        std::string tables;
        for (const Document::Part& part : document_.parts)
            writeHtml(part.table, part.title, tables);
        return ReportPage{.command = surroundings.call.text(),
                          .version = programVersion,
                          .heading = heading,
                          .drawing = drawing(),
                          .tables = tables,
                          .cautions = task_.remarks.cautions(),
                          .notes = task_.remarks.notes()}
            .html();
    }

    const AnalyzeTask& task_;
    const Analysis& analysis_;
    Document document_;
    AreaMethods methods_;
    std::vector<DrawnCurve> curves_; ///< ready for pictures, of all values together
    std::string notDrawn_;           ///< which curves were left out of them
};

Report runAnalyze(const AnalyzeOptions& options, const Surroundings& surroundings)
{
    AnalyzeTask task = parseAnalyzeTask(options);
    if (!task.files.report.empty())
        ReportPage::requirePossible(task.files.report);
    // Nothing is there to tidy up while the data are read: until then, an interrupt just ends the program.
    DataTable table = readAnalysisTable(task, surroundings);
    AnalysisWatch watch(surroundings, table.rows);
    const Analysis analysis = analyze(task, std::move(table), watch);
    const AnalysisFiles files(task, analysis);
    Report report = files.report(surroundings);
    if (report.error.empty())
        files.write(report, surroundings, watch);
    return report;
}

} // namespace

Action addAnalyze(CLI::App& command)
{
    const auto options = std::make_shared<AnalyzeOptions>();
    addAnalyzeOptions(command, *options);
    return [options](const Surroundings& surroundings) { return runAnalyze(*options, surroundings); };
}

} // namespace vexroc
