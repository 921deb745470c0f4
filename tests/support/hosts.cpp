#include "tests/support/hosts.h"

#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <span>

namespace roctest {

using namespace ROCALG_920;
using namespace VexCommon_920;
using namespace VexXML_920;

int HostData::add(std::vector<double> column)
{
    return add(std::move(column), std::make_unique<VexContVar>("column " + std::to_string(columns.size())));
}

int HostData::add(std::vector<double> column, std::unique_ptr<IVexVariable> description)
{
    columns.push_back(std::move(column));
    return variables.Add(std::move(description));
}

ColumnRecordIter HostData::records() const
{
    return ColumnRecordIter(std::vector<std::span<const double>>(columns.begin(), columns.end()));
}

Numbers numbers(const ROCOutBase& r)
{
    const auto ks = r.getKolmogorovSmirnov();
    Numbers all;
    for (const double value :
         {double(r.getTestVarInd()), double(r.getGroupVarInd()), r.getGroupValue(), double(r.getGroupValueOperation()),
          double(r.existTies()), double(r.getPositiveCount()), double(r.getNegativeCount()), r.getPosFreqCount(),
          r.getNegFreqCount(), ks.first, ks.second, r.getArea(), r.getGiniIndex(), r.getStdError(),
          r.getAsymptoticSig(), r.getCILower(), r.getCIUpper(), double(r.isDistrbutionChanged()),
          double(r.isZeroCountExist())})
        all.push_back({value});
    for (const double cutOff : r.getCutOffPoints())
        all.push_back({cutOff});
    for (const auto* points :
         {&r.getSensitivitySpecificity(), &r.getPrecisionRecallDraw(), &r.getPrecisionRecallCoordinates()})
        for (const auto& [first, second] : *points)
            all.insert(all.end(), {{first}, {second}});
    return all;
}

Numbers numbers(const ROCComparisonOutStats& c)
{
    return {{double(c.getCompare1Stats()->getTestVarInd())},
            {c.getCompare1Stats()->getGroupValue()},
            {double(c.getCompare2Stats()->getTestVarInd())},
            {c.getCompare2Stats()->getGroupValue()},
            {c.getZStats()},
            {c.getAsymptoticSig()},
            {c.getAUCDiff()},
            {c.getStdErrorDiff()},
            {c.getCILower()},
            {c.getCIUpper()}};
}

Outcome readBack(const RocAlgorithm& facade)
{
    Outcome outcome;
    outcome.code = facade.GetStatus().GetErrorCode();
    outcome.built = facade.IsModelBuilt();
    const VexWarnings& warnings = facade.GetWarningMessages();
    for (int i = 0; i < warnings.GetCount(); ++i) {
        outcome.warnings.push_back({warnings.GetStatus(i).GetErrorCode()});
        for (const auto parameter : warnings.GetParameters(i))
            outcome.warnings.back().push_back(parameter.GetInt());
    }
    if (const ROCOutputs* const results = facade.GetOutputStats()) {
        outcome.hasResults = true;
        for (const ROCOutBase* const record : results->getROCBaseStats())
            outcome.records.push_back(numbers(*record));
        for (const ROCComparisonOutStats* const comparison : results->getROCComparisonStats())
            outcome.comparisons.push_back(numbers(*comparison));
    }
    return outcome;
}

Outcome analyse(ROCSetting setting, HostData& data)
{
    RocAlgorithm facade(setting, data.variables);
    ColumnRecordIter records = data.records();
    static_cast<void>(facade.BuildModel(records));
    return readBack(facade);
}

void Script::enter(Call call)
{
    ++byKind_[call];
    if (calls_++ == throwAt)
        throw Failure();
}

bool ScriptedIter::HasMore() const
{
    script_.enter(Script::hasMore);
    return records_.HasMore();
}

Record* ScriptedIter::Next()
{
    script_.enter(Script::next);
    return records_.Next();
}

int ScriptedIter::NewPass()
{
    script_.enter(Script::newPass);
    return records_.NewPass();
}

int ScriptedListener::Notify(ProgressReport& report)
{
    script_.enter(Script::notify);
    announcements.emplace_back(report.DiscreteMeasure("records"), report.ScaleMeasure("percentage"));
    return 0;
}

bool ScriptedCancel::IsCancelRequested()
{
    script_.enter(Script::cancelQuery);
    return script_.calls(Script::cancelQuery) - 1 == script_.cancelAt;
}

int ScriptedVariable::GetVarType() const
{
    script_.enter(Script::varType);
    return continuous;
}

std::string ScriptedVariable::GetName() const
{
    script_.enter(Script::name);
    return VexContVar::GetName();
}

int ScriptedVariable::GetValueType() const
{
    script_.enter(Script::valueType);
    return valueType_;
}

const VexValueLabels* ScriptedVariable::GetValueLabels() const
{
    script_.enter(Script::valueLabels);
    return VexContVar::GetValueLabels();
}

} // namespace roctest
