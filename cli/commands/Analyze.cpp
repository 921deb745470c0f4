#include "cli/Failure.h"
#include "cli/Options.h"
#include "cli/analysis/HostData.h"
#include "cli/analysis/Meanings.h"
#include "cli/analysis/ResultTables.h"
#include "cli/commands/Commands.h"
#include "cli/commands/Outcome.h"
#include "cli/input/DelimitedReader.h"
#include "cli/output/OutputFile.h"
#include "cli/picture/DrawnCurve.h"
#include "cli/picture/Plot.h"
#include "cli/report/ReportPage.h"
#include "cli/run/InterruptGuard.h"
#include "cli/run/ProgressLine.h"
#include "cli/text/Words.h"

#include "host/ColumnRecordIter.h"
#include "host/FunctionListener.h"
#include "vexrocproc/ROCStatusCodes.h"
#include "vexrocproc/RocAlgorithm.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <sstream>

namespace vexroc {

namespace {

using ROCALG_920::ROCOutBase;
using ROCALG_920::ROCSetting;
using ROCALG_920::RocAlgorithm;
using VexCommon_920::CancelFlag;
using VexCommon_920::FunctionListener;
using VexCommon_920::VexStatus;

struct AnalyzeOptions {
    StudyOptions study;
    std::string group;
    std::string select;
    std::string cut;
    bool midPoint = false;
    std::string weight;
    std::string compare;
    std::string level = "0.95";
    bool biNegative = false;
    bool pr = false;
    bool keilwagen = false;
    bool noCurve = false;
    bool display = false;
    bool best = false;
    std::string curveFile;
    std::string prCurveFile;
    std::string plotFile;
    std::string reportFile;
};

/// The options as far as they can be understood without the data.
struct Request {
    Question question;
    Roles roles;
    double level;
    bool allTests;
    bool independent;
    bool needPr;
};

void requireDifferentFiles(const AnalyzeOptions& options)
{
    std::vector<std::pair<std::string, std::string>> files{{"--curve", options.curveFile},
                                                           {"--pr-curve", options.prCurveFile},
                                                           {"--plot", options.plotFile},
                                                           {"--report", options.reportFile},
                                                           {"--output", options.study.output}};
    std::erase_if(files, [](const auto& file) { return file.second.empty(); });
    for (std::size_t i = 0; i < files.size(); ++i)
        for (std::size_t j = i + 1; j < files.size(); ++j)
            if (files[i].second == files[j].second)
                throw usageError(files[i].first + " and " + files[j].first + " name the same file");
}

void requireFit(const AnalyzeOptions& options)
{
    const bool split = options.midPoint || !options.select.empty() || !options.cut.empty();
    const bool readsCurve =
        options.best || !options.curveFile.empty() || !options.plotFile.empty() || !options.reportFile.empty();
    const struct {
        bool wrong;
        const char* message;
    } rules[] = {
        {split && options.group.empty(), "--select, --cut and --mid-point split the cases by a column: name it with "
                                         "--group"},
        {int(options.midPoint) + int(!options.select.empty()) + int(!options.cut.empty()) > 1,
         "--select, --cut and --mid-point are three ways to split the cases: give one of them"},
        {options.biNegative && options.compare == "paired",
         "--bi-negative does not go with --compare paired: tests on the same cases have DeLong standard errors"},
        {options.noCurve && readsCurve,
         "--best, --curve, --plot and --report need the curve that --no-curve leaves out"},
        {options.keilwagen && !options.pr && options.prCurveFile.empty(),
         "--keilwagen says how precision-recall points are interpolated: ask for them with --pr or --pr-curve FILE"},
        {options.display && options.study.format != "text",
         "--display prints the component's own text: leave out --format"},
    };
    for (const auto& [wrong, message] : rules)
        if (wrong)
            throw usageError(message);
    requireDifferentFiles(options);
}

std::optional<GroupSplit> parseGroup(const AnalyzeOptions& options)
{
    if (options.group.empty())
        return std::nullopt;
    GroupSplit group{.column = options.group, .by = GroupSplit::By::values, .selected = {}};
    if (options.midPoint) {
        group.by = GroupSplit::By::midPoint;
    } else if (!options.cut.empty()) {
        group.by = GroupSplit::By::cut;
        const std::optional<double> cut = parseNumber(options.cut);
        if (!cut)
            throw usageError("--cut " + inQuotes(options.cut) + ": expected a number");
        group.cut = *cut;
    } else if (!options.select.empty()) {
        group.by = GroupSplit::By::select;
        group.selected = parseValues(options.select, "--select");
        if (group.selected.size() != 2)
            throw usageError("--select " + inQuotes(options.select) + ": expected two values, such as female,male");
    }
    return group;
}

Request parseRequest(const AnalyzeOptions& options)
{
    requireFit(options);
    Request request{.question = parseQuestion(options.study),
                    .roles = {},
                    .level = parseLevel(options.level),
                    .allTests = options.study.tests == std::vector<std::string>{"all"},
                    .independent = options.compare == "independent",
                    .needPr = options.pr || !options.prCurveFile.empty()};
    request.roles = {.state = request.question.state,
                     .tests = request.allTests ? std::vector<std::string>{} : request.question.tests,
                     .group = parseGroup(options),
                     .weight = options.weight,
                     .paired = options.compare == "paired"};
    return request;
}

/// Reads the columns; with --test all, the tests become known by it.
HostData readData(Request& request, std::istream& standardInput)
{
    const std::vector<ColumnRequest> requests = requestsFor(request.roles);
    DataTable table = readDelimited(*openSource(request.question.file, standardInput), requests,
                                    request.question.delimiter,
                                    request.allTests ? OtherColumns::numeric : OtherColumns::skipped);
    if (request.allTests)
        for (const DataColumn& column : table.columns)
            if (std::ranges::find(requests, column.request) == requests.end())
                request.roles.tests.push_back(column.request.name);
    return makeHostData(std::move(table), request.roles);
}

void setGroup(const GroupSplit& group, int variable, ROCSetting& setting)
{
    switch (group.by) {
    case GroupSplit::By::cut: return setting.setCutOffGroupVar(variable, group.cut);
    case GroupSplit::By::midPoint: return setting.setMidPointGroupVar(variable);
    case GroupSplit::By::values: // 0 and 1
    case GroupSplit::By::select: break;
    }
    setting.setSelectGroupVar(variable, firstGroupCode, secondGroupCode);
}

ROCSetting settingFor(const AnalyzeOptions& options, const Request& request, const HostData& data)
{
    ROCSetting setting;
    setting.setStateVar(data.state, 1.0);
    setting.setTestVars(data.tests);
    if (request.roles.group)
        setGroup(*request.roles.group, data.group, setting);
    setting.setFrequencyWeightVar(data.weight);
    setting.setConfidenceLevel(request.level);
    setting.setNeedPR(request.needPr);
    setting.setNeedROC(!options.noCurve);
    if (options.study.smaller)
        setting.setDirection(ROCConst_920::SmallerMorePositive);
    if (options.study.exclude)
        setting.setClassification(ROCConst_920::Exclude);
    if (options.biNegative)
        setting.setDistribution(ROCConst_920::BiNegativeExponential);
    if (options.keilwagen)
        setting.setPRInterpolationType(ROCConst_920::AlongFP);
    if (request.roles.paired)
        setting.setComparisonType(ROCConst_920::PairedComparison);
    if (request.independent)
        setting.setComparisonType(ROCConst_920::IndependentComparison);
    return setting;
}

/// Runs the analysis, with progress where a terminal shows it.
VexStatus buildModel(RocAlgorithm& algorithm, const HostData& data, CancelFlag& cancel, const Session& session)
{
    std::optional<ProgressLine> line;
    std::optional<FunctionListener> listener;
    if (session.terminal) {
        line.emplace(*session.terminal, session.progressAfter, data.columns.front().size());
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

/// Puts a finished run into words, tables and files.
class AnalysisReport {
public:
    AnalysisReport(const AnalyzeOptions& options, const Request& request, const HostData& data,
                   const RocAlgorithm& algorithm)
        : options_(options), request_(request), data_(data), algorithm_(algorithm),
          warnings_(inWords(algorithm.GetWarningMessages(), data.variables))
    {
        for (const Warning& warning : warnings_)
            report_.warnings.push_back(warning.line());
    }

    Report failed()
    {
        addRowNote();
        report_.error = inWords(algorithm_.GetStatus());
        return std::move(report_);
    }

    Report done()
    {
        addNotes();
        if (options_.display) {
            std::ostringstream text;
            algorithm_.Display(text);
            report_.text = text.str();
        } else {
            report_.text = textOf(findings(request_.question.format), report_.notes, warnings_);
        }
        return std::move(report_);
    }

    /// All files or, where one cannot be written or the run is cancelled meanwhile, none.
    Report writeFiles(Report report, const std::optional<Plot>& plot, const Session& session, CancelFlag& cancel) const
    {
        const ROCALG_920::ROCOutputs& results = *algorithm_.GetOutputStats();
        std::vector<DrawnCurve> curves;
        if (plot || !options_.reportFile.empty())
            curves = drawnCurves(results, data_.variables);
        std::deque<std::string> texts; // a file may refer to its text until it is in place
        std::vector<std::unique_ptr<OutputFile>> files;
        const auto stage = [&](const std::string& path, auto makeText) {
            if (path.empty())
                return;
            requireNotCancelled(cancel.IsCancelRequested());
            texts.push_back(makeText());
            files.push_back(std::make_unique<OutputFile>(path, texts.back()));
        };
        stage(options_.curveFile, [&] { return curveCsv(results, data_.variables); });
        stage(options_.prCurveFile, [&] { return precisionRecallCsv(results, data_.variables); });
        stage(options_.plotFile, [&] { return plot->draw(curves, cancel); });
        stage(options_.reportFile, [&] { return page(curves, report, session); });
        stage(request_.question.output, [&] { return std::exchange(report.text, ""); });
        requireNotCancelled(cancel.IsCancelRequested());
        for (const auto& file : files)
            file->commit();
        return report;
    }

private:
    [[nodiscard]] Findings findings(OutputFormat format) const
    {
        const bool weighted = data_.weight >= 0;
        const ROCALG_920::ROCOutputs& results = *algorithm_.GetOutputStats();
        Findings found{.format = format,
                       .command = "analyze",
                       .heading = heading(),
                       .question = request_.question.facts(),
                       .tables = {}};
        const auto add = [&](const char* member, const char* title, Table table) {
            found.tables.push_back({member, title, std::move(table)});
        };
        addFacts(found);
        add("cases", "Cases", caseTable(format, data_.rows, weighted));
        add("areas", "Areas under the ROC curves", areaTable(format, results, data_.variables, weighted));
        if (!results.getROCComparisonStats().empty())
            add("comparisons", "Differences between the areas",
                comparisonTable(format, results, data_.variables, request_.roles.paired));
        if (options_.best)
            add("best_cut_offs", "Best cut-offs by Youden's index: sensitivity + specificity - 1",
                bestCutOffTable(format, results, data_.variables));
        return found;
    }

    void addFacts(Findings& found) const
    {
        if (request_.roles.group)
            found.question.emplace_back("group", request_.roles.group->column);
        if (data_.weight >= 0)
            found.question.emplace_back("weight", request_.roles.weight);
        if (!options_.compare.empty())
            found.question.emplace_back("comparison", options_.compare);
        addInference(found, request_.roles.paired ? "DeLong" : standardErrorWord(options_.biNegative),
                     request_.level);
    }

    [[nodiscard]] std::vector<std::string> heading() const
    {
        std::vector<std::string> lines{"ROC analysis", request_.question.heading()};
        if (data_.weight >= 0)
            lines.push_back("Weights: " + visible(request_.roles.weight)
                            + "; they enter the weighted counts only: areas and curves count every row once");
        lines.push_back(request_.roles.paired ? "Standard errors: DeLong; confidence level " + shortest(request_.level)
                                              : standardErrorHeading(options_.biNegative, request_.level));
        return lines;
    }

    [[nodiscard]] std::string page(const std::vector<DrawnCurve>& curves, const Report& report,
                                   const Session& session) const
    {
        const Findings found = findings(OutputFormat::html);
        return ReportPage{.command = session.command,
                          .findings = found,
                          .curves = curves,
                          .notes = report.notes,
                          .warnings = warnings_}
            .html();
    }

    void addNotes()
    {
        if (options_.display)
            addRowNote();
        if (std::ranges::find(data_.tests, data_.state) != data_.tests.end())
            report_.notes.push_back(inQuotes(request_.roles.state.column) + " is the state; it is not also a test");
        if (const std::size_t rounded = data_.rows.roundedWeights; rounded > 0)
            report_.notes.push_back("weights that are not whole numbers, rounded with halves up: "
                                    + std::to_string(rounded));
        for (const ROCOutBase* const record : algorithm_.GetOutputStats()->getROCBaseStats())
            addAreaNotes(subjectOf(*record),
                         {record->getPositiveCount(), record->getNegativeCount(), record->getArea(),
                          record->getStdError()},
                         report_.notes);
        if (options_.pr && options_.prCurveFile.empty() && !options_.display && options_.plotFile.empty()
            && options_.reportFile.empty())
            report_.notes.push_back("the points of --pr are drawn by --plot and --report, shown by --display and "
                                    "written by --pr-curve FILE");
    }

    [[nodiscard]] std::string subjectOf(const ROCOutBase& record) const
    {
        const std::string variable = visible(variableName(data_.variables, record.getTestVarInd()));
        return record.getGroupVarInd() < 0 ? variable
                                           : variable + " where " + visible(groupOf(record, data_.variables));
    }

    /// What the table of cases tells, where there is none.
    void addRowNote()
    {
        const RowCounts& rows = data_.rows;
        std::string note = std::to_string(rows.read) + " rows read, " + std::to_string(rows.read - rows.used())
            + " left out";
        const char* separator = " (";
        for (const auto& [reason, count] : rows.leftOut())
            note += std::exchange(separator, ", ") + reason + ": " + std::to_string(count);
        note += rows.leftOut().empty() ? "" : ")";
        for (const auto& [test, count] : rows.missingTests)
            note += ", " + inQuotes(test) + " missing in " + std::to_string(count);
        report_.notes.push_back(note);
    }

    const AnalyzeOptions& options_;
    const Request& request_;
    const HostData& data_;
    const RocAlgorithm& algorithm_;
    std::vector<Warning> warnings_;
    Report report_;
};

Report runAnalyze(const AnalyzeOptions& options, const Session& session)
{
    Request request = parseRequest(options);
    for (const std::string& path : {options.curveFile, options.prCurveFile, options.plotFile, options.reportFile})
        if (!path.empty())
            OutputFile::requirePlace(path);
    std::optional<Plot> plot;
    if (!options.plotFile.empty())
        plot.emplace(options.plotFile);
    if (!options.reportFile.empty())
        ReportPage::requireBuilt();
    // Nothing is there to tidy up while the data are read: until then, an interrupt just ends the program.
    HostData data = readData(request, session.standardInput);
    CancelFlag cancel;
    const InterruptGuard guard(cancel);
    ROCSetting setting = settingFor(options, request, data);
    RocAlgorithm algorithm(setting, data.variables);
    const VexStatus status = buildModel(algorithm, data, cancel, session);
    requireNotCancelled(status.GetErrorCode() == ROCALG_920::statusCode::cancelled);
    AnalysisReport report(options, request, data, algorithm);
    if (status.IsError())
        return report.failed();
    return report.writeFiles(report.done(), plot, session, cancel);
}

void addGroupOptions(CLI::App& command, AnalyzeOptions& options)
{
    command.add_option("--group", options.group, "Column that splits the cases in two groups; needs no more when it "
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
    command.add_option("--weight", options->weight, "Column with the number of cases that a row stands for; changes "
                                                    "the weighted counts only")
        ->type_name("COLUMN");
    command.add_option("--compare", options->compare, "paired: all tests on the same cases; independent: each test "
                                                      "between the groups")
        ->type_name("WORD")
        ->check(CLI::IsMember({"paired", "independent"}));
    addLevelOption(command, options->level);
    addBiNegativeOption(command, options->biNegative);
    addOutputOptions(command, *options);
    command.footer("Example: vexroc analyze data.csv --state diagnosis=malignant --test all --compare paired\n"
                   "         vexroc analyze data.csv --state disease=1 --test marker --group age --cut 50 --compare "
                   "independent");
    return [options](const Session& session) { return runAnalyze(*options, session); };
}

} // namespace vexroc
