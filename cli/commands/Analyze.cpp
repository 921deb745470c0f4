#include "cli/Failure.h"
#include "cli/Options.h"
#include "cli/analysis/HostData.h"
#include "cli/analysis/Meanings.h"
#include "cli/analysis/ResultTables.h"
#include "cli/analysis/Slices.h"
#include "cli/commandline/Choice.h"
#include "cli/commands/Commands.h"
#include "cli/commands/Outcome.h"
#include "cli/output/OutputFile.h"
#include "cli/run/InterruptGuard.h"
#include "cli/run/ProgressLine.h"
#include "cli/text/Words.h"

#include "host/ColumnRecordIter.h"
#include "host/FunctionListener.h"
#include "vexrocproc/ROCStatusCodes.h"
#include "vexrocproc/RocAlgorithm.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>

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
    std::string by;
    std::string compare;
    std::string level = "0.95";
    bool biNegative = false;
    bool pr = false;
    bool keilwagen = false;
    bool noCurve = false;
    bool display = false;
    std::string curveFile;
    std::string prCurveFile;
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

void requireFit(const AnalyzeOptions& options)
{
    const bool split = options.midPoint || !options.select.empty() || !options.cut.empty();
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
        {options.noCurve && !options.curveFile.empty(), "--curve FILE needs the curve that --no-curve leaves out"},
        {options.keilwagen && !options.pr && options.prCurveFile.empty(),
         "--keilwagen says how precision-recall points are interpolated: ask for them with --pr or --pr-curve FILE"},
        {options.display && options.study.format != "text",
         "--display prints the component's own text: leave out --format"},
        {!options.curveFile.empty() && options.curveFile == options.prCurveFile,
         "--curve and --pr-curve name the same file"},
        {options.display && !options.by.empty(),
         "--display prints the component's own text of one analysis: leave out --by"},
    };
    for (const auto& [wrong, message] : rules)
        if (wrong)
            throw usageError(message);
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
    if (options.by == request.question.state.column)
        throw usageError("--by names the state column: every value would be one state; name another column");
    return request;
}

/// Reads the columns; with --test all, the tests become known by it.
DataTable readData(const AnalyzeOptions& options, Request& request, std::istream& standardInput)
{
    std::vector<ColumnRequest> requests = requestsFor(request.roles);
    if (!options.by.empty())
        requests.push_back({options.by, ColumnKind::labels});
    DataTable table = readTable(request.question.input, standardInput, requests,
                                request.allTests ? OtherColumns::numeric : OtherColumns::skipped);
    if (request.allTests)
        for (const DataColumn& column : table.columns)
            if (std::ranges::find(requests, column.request) == requests.end())
                request.roles.tests.push_back(column.request.name);
    return table;
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
    if (session.progress.stream != nullptr) {
        line.emplace(session.progress, data.columns.front().size());
        listener.emplace([&line](VexCommon_920::ProgressReport& report) { line->show(report); });
        algorithm.SetProgressListener(&*listener);
    }
    algorithm.SetCancelPtr(&cancel);
    VexCommon_920::ColumnRecordIter records({data.columns.begin(), data.columns.end()});
    const VexStatus status = algorithm.BuildModel(records);
    algorithm.SetProgressListener(nullptr);
    return status;
}

void requireNotCancelled(bool cancelled)
{
    if (cancelled)
        throw Failure(exitCancelled, "cancelled; nothing was written");
}

std::string heading(const AnalyzeOptions& options, const Request& request)
{
    std::string lines = "ROC analysis\n" + request.question.heading() + '\n';
    if (!options.by.empty())
        lines += "One analysis by value of " + visible(options.by) + '\n';
    if (!options.weight.empty())
        lines += "Weights: " + visible(options.weight)
            + "; they enter the weighted counts only: areas and curves count every row once\n";
    return lines
        + (request.roles.paired ? "Standard errors: DeLong; confidence level " + shortest(request.level)
                                : standardErrorHeading(options.biNegative, request.level))
        + '\n';
}

struct TitledTable {
    const char* title;
    Table table;
};

/// What came of one analysis, or of one per value, before it is written.
struct Answer {
    Report report; ///< its text only where the component's own is asked for
    std::vector<TitledTable> tables;
    std::optional<Table> curve; ///< for --curve
    std::optional<Table> precisionRecall;
};

std::string textOf(const AnalyzeOptions& options, const Request& request, const std::vector<TitledTable>& tables)
{
    const bool text = request.question.format == OutputFormat::text;
    std::string all = text ? heading(options, request) : "";
    for (const TitledTable& part : tables)
        all += (all.empty() ? "" : "\n") + (text ? std::string(part.title) + '\n' : "") + part.table.str();
    return all;
}

/// All files or, where one cannot be written or the run is cancelled meanwhile, none.
void writeFiles(const AnalyzeOptions& options, const Answer& answer, CancelFlag& cancel)
{
    std::vector<std::string> texts;
    texts.reserve(2); // a file may refer to its text until it is in place
    std::vector<std::unique_ptr<OutputFile>> files;
    const auto stage = [&](const std::string& path, const std::optional<Table>& table) {
        if (!table)
            return;
        texts.push_back(table->str());
        files.push_back(std::make_unique<OutputFile>(path, texts.back()));
    };
    stage(options.curveFile, answer.curve);
    stage(options.prCurveFile, answer.precisionRecall);
    requireNotCancelled(cancel.IsCancelRequested());
    for (const auto& file : files)
        file->commit();
}

/// Puts a finished run into words and tables.
class AnalysisReport {
public:
    AnalysisReport(const AnalyzeOptions& options, const Request& request, const HostData& data,
                   const RocAlgorithm& algorithm)
        : options_(options), request_(request), data_(data), algorithm_(algorithm)
    {
        report_.warnings = inWords(algorithm.GetWarningMessages(), data.variables);
    }

    Answer failed()
    {
        addRowNote();
        report_.error = inWords(algorithm_.GetStatus());
        return {std::move(report_), {}, {}, {}};
    }

    Answer done()
    {
        Answer answer;
        if (options_.display) {
            std::ostringstream text;
            algorithm_.Display(text);
            report_.text = text.str();
            addRowNote();
        } else {
            answer.tables = tables();
        }
        addNotes();
        const ROCALG_920::ROCOutputs& results = *algorithm_.GetOutputStats();
        if (!options_.curveFile.empty())
            answer.curve = curveTable(results, data_.variables);
        if (!options_.prCurveFile.empty())
            answer.precisionRecall = precisionRecallTable(results, data_.variables);
        answer.report = std::move(report_);
        return answer;
    }

private:
    [[nodiscard]] std::vector<TitledTable> tables() const
    {
        const OutputFormat format = request_.question.format;
        const bool weighted = data_.weight >= 0;
        const ROCALG_920::ROCOutputs& results = *algorithm_.GetOutputStats();
        std::vector<TitledTable> all;
        all.push_back({"Cases", caseTable(format, data_.rows, weighted)});
        all.push_back({"Areas under the ROC curves", areaTable(format, results, data_.variables, weighted)});
        if (!results.getROCComparisonStats().empty())
            all.push_back({"Differences between the areas",
                           comparisonTable(format, results, data_.variables, request_.roles.paired)});
        return all;
    }

    void addNotes()
    {
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
        if (options_.pr && options_.prCurveFile.empty() && !options_.display)
            report_.notes.push_back("the points of --pr are shown by --display and written by --pr-curve FILE");
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
    Report report_;
};

/// One analysis of all rows of the table.
Answer analyzeRows(const AnalyzeOptions& options, Request request, DataTable table, CancelFlag& cancel,
                   const Session& session)
{
    HostData data = makeHostData(std::move(table), request.roles);
    ROCSetting setting = settingFor(options, request, data);
    RocAlgorithm algorithm(setting, data.variables);
    const VexStatus status = buildModel(algorithm, data, cancel, session);
    requireNotCancelled(status.GetErrorCode() == ROCALG_920::statusCode::cancelled);
    AnalysisReport report(options, request, data, algorithm);
    return status.IsError() ? report.failed() : report.done();
}

/// Puts the analyses of several values together: their tables behind a column with the value, their words behind it.
class ValueAnswers {
public:
    explicit ValueAnswers(std::string column) : column_(std::move(column)) {}

    void add(const std::string& value, Answer answer)
    {
        const std::string subject = visible(column_) + " = " + visible(value) + ": ";
        for (const std::string& note : answer.report.notes)
            all_.report.notes.push_back(subject + note);
        for (const std::string& warning : answer.report.warnings)
            all_.report.warnings.push_back(subject + warning);
        if (!answer.report.error.empty()) {
            all_.report.warnings.push_back(subject + "no result: " + answer.report.error);
            return;
        }
        for (TitledTable& part : answer.tables)
            append(value, part);
        append(value, answer.curve, all_.curve);
        append(value, answer.precisionRecall, all_.precisionRecall);
        ++results_;
    }

    Answer take(std::size_t missing)
    {
        if (missing > 0)
            all_.report.notes.push_back("rows with a missing " + inQuotes(column_) + ", in no analysis: "
                                        + std::to_string(missing));
        if (results_ == 0)
            all_.report.error = "no value of " + inQuotes(column_) + " gave a result";
        return std::move(all_);
    }

private:
    static constexpr TableColumn leading{"by", "by", CellRole::name};

    /// Values need not have the same tables: a comparison may lack a group.
    void append(const std::string& value, const TitledTable& part)
    {
        auto same = std::ranges::find(all_.tables, std::string_view(part.title), &TitledTable::title);
        if (same == all_.tables.end())
            same = all_.tables.insert(same, {part.title, part.table.behind(leading)});
        same->table.append(value, part.table);
    }
    static void append(const std::string& value, const std::optional<Table>& rows, std::optional<Table>& all)
    {
        if (!rows)
            return;
        if (!all)
            all = rows->behind(leading);
        all->append(value, *rows);
    }

    std::string column_;
    Answer all_;
    int results_ = 0;
};

Answer analyzeByValue(const AnalyzeOptions& options, const Request& request, DataTable table, CancelFlag& cancel,
                      const Session& session)
{
    const Slices slices(std::move(table), options.by);
    ValueAnswers answers(options.by);
    for (std::size_t value = 0; value < slices.values().size(); ++value)
        answers.add(slices.values()[value], analyzeRows(options, request, slices.slice(value), cancel, session));
    return answers.take(slices.missing());
}

Report runAnalyze(const AnalyzeOptions& options, const Session& session)
{
    Request request = parseRequest(options);
    for (const std::string& path : {options.curveFile, options.prCurveFile})
        if (!path.empty())
            OutputFile::requirePlace(path);
    // Nothing is there to tidy up while the data are read: until then, an interrupt just ends the program.
    DataTable table = readData(options, request, session.standardInput);
    CancelFlag cancel;
    const InterruptGuard guard(cancel);
    Answer answer = options.by.empty() ? analyzeRows(options, request, std::move(table), cancel, session)
                                       : analyzeByValue(options, request, std::move(table), cancel, session);
    if (!answer.report.error.empty())
        return std::move(answer.report);
    writeFiles(options, answer, cancel);
    if (!options.display)
        answer.report.text = textOf(options, request, answer.tables);
    return std::move(answer.report);
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
    return [options](const Session& session) { return runAnalyze(*options, session); };
}

} // namespace vexroc
