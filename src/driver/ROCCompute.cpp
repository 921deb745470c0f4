#include "driver/ROCCompute.h"

#include "driver/RecordFeed.h"
#include "driver/ResultAssembly.h"
#include "host/VexMV.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace ROCALG_920 {

using VexCommon_920::MultiPassRecordIter;
using VexCommon_920::VexMV;
using VexCommon_920::VexStatus;
using VexCommon_920::VexWarnings;

namespace {

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

} // namespace

ROCCompute::ROCCompute(ROCSetting& setting, VexXML_920::VexVarList& varList) : setting_(setting), varList_(varList) {}

ROCCompute::~ROCCompute() = default;

VexStatus& ROCCompute::build(MultiPassRecordIter& iter)
{
    status_ = VexStatus();
    warnings_ = VexWarnings();
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
    if (const Code code = RecordFeed(setting_, split, spaces).readAll(iter, monitor); code != statusCode::noError)
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
    GroupSplit asked(setting_, varList_, iter, groupVar);
    if (!asked.isDefined()) {
        warn(statusCode::groupIgnored);
        return independent ? statusCode::groupRequired : statusCode::noError;
    }
    if (asked.values().constant && independent)
        return statusCode::groupConstant;
    split = std::move(asked);
    return statusCode::noError;
}

void ROCCompute::warn(int code) { warnings_.AddWarning(VexStatus(code, true), VexWarnings::Collection); }

} // namespace ROCALG_920
