#include "driver/ROCCompute.h"

#include "driver/ResultAssembly.h"
#include "host/Record.h"
#include "host/VexContVar.h"
#include "host/VexMV.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <new>
#include <utility>

namespace ROCALG_920 {

using VexCommon_920::MultiPassRecordIter;
using VexCommon_920::Record;
using VexCommon_920::VexMV;
using VexCommon_920::VexStatus;
using VexCommon_920::VexWarnings;
using VexXML_920::IVexVariable;
using VexXML_920::VexContVar;

namespace {

constexpr std::int64_t recordsPerAnnouncement = 1000;

bool hasRecords(MultiPassRecordIter& iter)
{
    if (!iter.HasMore())
        iter.NewPass();
    return iter.HasMore();
}

/// Plain pointers to the records from a position on.
template <class Owned>
std::vector<Owned*> pointersFrom(const std::vector<std::unique_ptr<Owned>>& records, std::size_t first)
{
    std::vector<Owned*> pointers;
    for (std::size_t i = first; i < records.size(); ++i)
        pointers.push_back(records[i].get());
    return pointers;
}

/// Nearest integer, halves up; 0, which no space accepts, for a weight that is not finite or beyond int.
int roundedWeight(double weight)
{
    const double rounded = std::floor(weight + 0.5);
    const bool inRange = rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max();
    return inRange ? static_cast<int>(rounded) : 0;
}

} // namespace

ROCCompute::ROCCompute(ROCSetting& setting, VexXML_920::VexVarList& varList) : setting_(setting), varList_(varList) {}

ROCCompute::~ROCCompute() = default;

VexStatus& ROCCompute::build(MultiPassRecordIter& iter)
{
    status_ = VexStatus();
    warnings_ = VexWarnings();
    constantGroup_ = false;
    ranOutOfMemory_ = false;
    try {
        const Code code = run(iter);
        if (code != statusCode::noError)
            status_ = VexStatus(code, false);
    } catch (const std::bad_alloc&) {
        ranOutOfMemory_ = true;
        throw;
    }
    return status_;
}

/// All steps of a run; the first code that is not statusCode::noError ends it.
ROCCompute::Code ROCCompute::run(MultiPassRecordIter& iter)
{
    if (const Code code = checkState(); code != statusCode::noError)
        return code;
    std::vector<int> testVars;
    if (const Code code = checkTestVars(testVars); code != statusCode::noError)
        return code;
    const int groupVar = groupVarInEffect();
    if (const Code code = checkComparison(groupVar); code != statusCode::noError)
        return code;
    if (!hasRecords(iter))
        return statusCode::noData;
    GroupSplit split;
    if (const Code code = defineGroups(iter, groupVar, split); code != statusCode::noError)
        return code;

    RunMonitor monitor(listener_, cancelInfo_);
    monitor.announceShare(0.01);
    const ROCSpace empty(setting_.isIncludeCutOff(), setting_.isLargerTestMorePositive(), setting_.needPR(),
                         setting_.needROC(), setting_.getPRInterpolationType() == ROCConst_920::AlongTP);
    for (const int testVar : testVars)
        static_cast<void>(varList_.GetVarAt(testVar)); // what the host's list does not know cannot be displayed later
    TestSpaces spaces(testVars, empty, split);
    monitor.announceShare(0.03);
    if (const Code code = readRecords(iter, split, spaces, monitor); code != statusCode::noError)
        return code;

    const std::size_t firstResult = results_.size();
    const std::size_t firstComparison = comparisons_.size();
    ResultAssembly assembly(setting_, split, testVars, spaces, monitor);
    if (const Code code = assembly.run(iter, results_, comparisons_, warnings_); code != statusCode::noError)
        return code;
    outputs_ = std::make_unique<ROCOutputs>(varList_, pointersFrom(results_, firstResult),
                                            pointersFrom(comparisons_, firstComparison));
    return statusCode::noError;
}

ROCCompute::Code ROCCompute::checkState() const
{
    if (setting_.getStateVar() == -1)
        return statusCode::stateVarNotSet;
    static_cast<void>(varList_.GetVarAt(setting_.getStateVar())); // the host's list knows the index, or throws
    return VexMV::IsMissing(setting_.getValueOfStateVar()) ? statusCode::stateValueMissing : statusCode::noError;
}

/// Keeps the test variables that are not negative and not the state variable itself, repeats included.
ROCCompute::Code ROCCompute::checkTestVars(std::vector<int>& usable) const
{
    std::ranges::copy_if(setting_.getTestVars(), std::back_inserter(usable),
                         [&](int v) { return v >= 0 && v != setting_.getStateVar(); });
    return usable.empty() ? statusCode::noTestVar : statusCode::noError;
}

/// The group variable, or -1 when there is none or a paired comparison ignores it.
int ROCCompute::groupVarInEffect()
{
    const int groupVar = setting_.getGroupVar();
    if (groupVar >= 0 && setting_.getComparisonType() == ROCConst_920::PairedComparison) {
        warn(statusCode::groupIgnored);
        return -1;
    }
    return groupVar;
}

ROCCompute::Code ROCCompute::checkComparison(int groupVar) const
{
    switch (setting_.getComparisonType()) {
    case ROCConst_920::NoComparison: return statusCode::noError;
    case ROCConst_920::IndependentComparison: return groupVar < 0 ? statusCode::groupRequired : statusCode::noError;
    case ROCConst_920::PairedComparison:
        return setting_.getTestVars().size() < 2 ? statusCode::fewerThanTwoTestVars : statusCode::noError;
    }
    return statusCode::unexpected; // no such comparison
}

/// Works out the groups. A group variable that cannot be split as asked is ignored with a warning.
ROCCompute::Code ROCCompute::defineGroups(MultiPassRecordIter& iter, int groupVar, GroupSplit& split)
{
    if (groupVar < 0)
        return statusCode::noError;
    const bool independent = setting_.getComparisonType() == ROCConst_920::IndependentComparison;
    std::vector<double> values = groupValues(iter, groupVar);
    if (values.empty()) {
        warn(statusCode::groupIgnored);
        return independent ? statusCode::groupRequired : statusCode::noError;
    }
    if (constantGroup_ && independent)
        return statusCode::groupConstant;
    split = GroupSplit(groupVar, std::move(values), constantGroup_);
    return statusCode::noError;
}

/// One value to split at, two values to be equal to, or none when the variable gives none. Sets constantGroup_.
std::vector<double> ROCCompute::groupValues(MultiPassRecordIter& iter, int groupVar)
{
    const IVexVariable* const variable = varList_.GetVarAt(groupVar);
    if (variable->GetValueType() == IVexVariable::twoValued)
        return {0.0, 1.0};
    switch (setting_.getGroupType()) {
    case ROCConst_920::CutPointGroup: return {setting_.getGroupCutValue()};
    case ROCConst_920::MidPointGroup:
        if (variable->GetVarType() != IVexVariable::continuous)
            return {};
        return {midPoint(iter, groupVar)};
    case ROCConst_920::NoGroup:
    case ROCConst_920::SelectGroup: break;
    }
    constantGroup_ = setting_.getGroupSelectValues().size() == 1;
    return setting_.getGroupSelectValues();
}

/// From the host's range of the variable, or from the data when the host does not know it.
double ROCCompute::midPoint(MultiPassRecordIter& iter, int groupVar)
{
    const auto* const variable = dynamic_cast<const VexContVar*>(varList_.GetVarAt(groupVar));
    const double max = variable != nullptr ? variable->GetMax() : VexContVar::unknownMax;
    const double min = variable != nullptr ? variable->GetMin() : VexContVar::unknownMin;
    if (max == VexContVar::unknownMax || min == VexContVar::unknownMin) // exact: the host's words for unknown
        return computeMidPoint(iter, groupVar);
    constantGroup_ = min == max;
    return (max + min) * 0.5;
}

double ROCCompute::computeMidPoint(MultiPassRecordIter& iter, int groupVar)
{
    double max = 0.0;
    double min = 0.0;
    bool first = true;
    while (iter.HasMore()) {
        const Record* const record = iter.Next();
        if (record == nullptr)
            break;
        const double x = (*record)[groupVar];
        if (first)
            max = min = x;
        else if (x > max)
            max = x;
        else if (x < min)
            min = x;
        first = false;
    }
    iter.NewPass();
    constantGroup_ = min == max; // a NaN counts as different
    return (max + min) * 0.5;
}

namespace {

/// Feeds one record to the space of its group in every variable. In a paired analysis a case takes part in all
/// variables or in none, so that all spaces hold the same cases in the same order.
class RecordFeed {
public:
    RecordFeed(const ROCSetting& setting, const GroupSplit& split, TestSpaces& spaces)
        : split_(split), variables_(spaces.variables()), stateVar_(setting.getStateVar()),
          positiveValue_(setting.getValueOfStateVar()), weightVar_(setting.getFrequencyWeightVar()),
          completeOnly_(setting.getComparisonType() == ROCConst_920::PairedComparison)
    {
    }

    void take(const Record& record)
    {
        const bool positive = record[stateVar_] == positiveValue_; // exact; NaN never equals
        const int weight = weightVar_ >= 0 ? roundedWeight(record[weightVar_]) : 1;
        positiveSeen_ = positiveSeen_ || positive;
        const int group = split_.groupVar() >= 0 ? split_.spaceOf(record[split_.groupVar()]) : 0;
        if (group < 0 || (completeOnly_ && !isComplete(record)))
            return;
        for (TestSpaces::Variable& variable : variables_)
            variable.spaces[static_cast<std::size_t>(group)].update(positive, record[variable.index], weight);
    }
    /// Some record had the positive state, whatever its weight.
    [[nodiscard]] bool positiveSeen() const noexcept { return positiveSeen_; }

private:
    [[nodiscard]] bool isComplete(const Record& record) const
    {
        return std::ranges::none_of(variables_, [&](const auto& v) { return std::isnan(record[v.index]); });
    }

    const GroupSplit& split_;
    std::vector<TestSpaces::Variable>& variables_;
    int stateVar_;
    double positiveValue_;
    int weightVar_;
    bool completeOnly_;
    bool positiveSeen_ = false;
};

} // namespace

ROCCompute::Code ROCCompute::readRecords(MultiPassRecordIter& iter, const GroupSplit& split, TestSpaces& spaces,
                                         RunMonitor& monitor) const
{
    RecordFeed feed(setting_, split, spaces);
    std::int64_t count = 0;
    while (iter.HasMore()) {
        if (monitor.cancelled())
            return statusCode::cancelled;
        if (count % recordsPerAnnouncement == 0)
            monitor.announceRecords(count);
        const Record* const record = iter.Next();
        if (record == nullptr)
            break;
        feed.take(*record);
        ++count;
    }
    monitor.setRecords(count);
    monitor.announceShare(0.2);
    iter.NewPass();
    return feed.positiveSeen() ? statusCode::noError : statusCode::stateValueNotFound;
}

void ROCCompute::warn(int code) { warnings_.AddWarning(VexStatus(code, true), VexWarnings::Collection); }

} // namespace ROCALG_920
