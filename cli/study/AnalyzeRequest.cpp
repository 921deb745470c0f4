#include "cli/study/AnalyzeRequest.h"

#include "cli/commands/Outcome.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <optional>

namespace vexroc {

namespace {

using ROCALG_920::ROCSetting;

void requireFit(const AnalyzeOptions& options)
{
    const bool split = options.midPoint || !options.select.empty() || !options.cut.empty();
    const bool readsCurve =
        options.best || !options.curveFile.empty() || !options.plotFile.empty() || !options.reportFile.empty();
    const struct {
        bool wrong;
        const char* message;
    } rules[] = {
        {split && options.group.empty(),
         "--select, --cut and --mid-point split the cases by a column: name it with "
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

} // namespace

AnalyzeRequest parseRequest(const AnalyzeOptions& options)
{
    requireFit(options);
    AnalyzeRequest request{.question = parseQuestion(options.study),
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

DataTable readData(const AnalyzeOptions& options, AnalyzeRequest& request, const Surroundings& surroundings)
{
    std::vector<ColumnRequest> requests = requestsFor(request.roles);
    if (!options.by.empty())
        requests.push_back({options.by, ColumnKind::labels});
    DataTable table = readTable(request.question.input, surroundings, requests,
                                request.allTests ? OtherColumns::numeric : OtherColumns::skipped);
    if (request.allTests)
        for (const DataColumn& column : table.columns)
            if (std::ranges::find(requests, column.request) == requests.end())
                request.roles.tests.push_back(column.request.name);
    return table;
}

ROCSetting settingFor(const AnalyzeOptions& options, const AnalyzeRequest& request, const HostData& data)
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

std::vector<std::string> AnalyzeRequest::heading(const AnalyzeOptions& options) const
{
    std::vector<std::string> lines{"ROC analysis", question.heading()};
    if (!options.by.empty())
        lines.push_back("One analysis by value of " + visible(options.by));
    if (!options.weight.empty())
        lines.push_back("Weights: " + visible(options.weight)
                        + "; they enter the weighted counts only: areas and curves count every row once");
    lines.push_back(roles.paired ? "Standard errors: DeLong; confidence level " + shortest(level)
                                 : standardErrorHeading(options.biNegative, level));
    return lines;
}

std::vector<Fact> AnalyzeRequest::facts(const AnalyzeOptions& options) const
{
    std::vector<Fact> facts = question.facts();
    if (roles.group)
        facts.emplace_back("group", roles.group->column);
    if (!options.by.empty())
        facts.emplace_back("by", options.by);
    if (!options.weight.empty())
        facts.emplace_back("weight", options.weight);
    if (!options.compare.empty())
        facts.emplace_back("comparison", options.compare);
    addInference(facts, roles.paired ? "DeLong" : standardErrorWord(options.biNegative), level);
    return facts;
}

} // namespace vexroc
