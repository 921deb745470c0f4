#include "tests/support/hosts.h"

#include "vexrocproc/ROCComparisonOutStats.h"

#include <span>

namespace roctest {

using namespace ROCALG_920;
using namespace VexCommon_920;
using namespace VexXML_920;

namespace {

class ScriptedVariable final : public VexContVar {
public:
    ScriptedVariable(Script& script, int valueType) : VexContVar("scripted"), script_(script), valueType_(valueType) {}
    [[nodiscard]] int GetVarType() const override { return script_.enter(Script::varType, varType_); }
    [[nodiscard]] int GetValueType() const override { return script_.enter(Script::valueType, valueType_); }

private:
    Script& script_;
    int varType_ = continuous;
    int valueType_;
};

Numbers numbers(const ROCComparisonOutStats& c)
{
    const ROCOutBase& first = *c.getCompare1Stats();
    const ROCOutBase& second = *c.getCompare2Stats();
    return {{double(first.getTestVarInd())},
            {first.getGroupValue()},
            {double(second.getTestVarInd())},
            {second.getGroupValue()},
            {c.getZStats()},
            {c.getAsymptoticSig()},
            {c.getAUCDiff()},
            {c.getStdErrorDiff()},
            {c.getCILower()},
            {c.getCIUpper()}};
}

} // namespace

int HostData::add(std::vector<double> column, int valueType)
{
    columns.push_back(std::move(column));
    return variables.Add(std::make_unique<ScriptedVariable>(*script, valueType));
}

ScriptedIter HostData::records() const
{
    return {ColumnRecordIter(std::vector<std::span<const double>>(columns.begin(), columns.end())), *script};
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

Numbers numbers(const Outcome& outcome)
{
    Numbers all{{static_cast<double>(outcome.code)}};
    for (const auto* lists : {&outcome.records, &outcome.comparisons})
        for (const Numbers& list : *lists)
            all.insert(all.end(), list.begin(), list.end());
    return all;
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
    ScriptedIter records = data.records();
    static_cast<void>(facade.BuildModel(records));
    return readBack(facade);
}

Host::Host(ROCSetting setting, HostData& data) : data_(data), facade(setting, data.variables)
{
    facade.SetProgressListener(this);
    facade.SetCancelPtr(this);
}

long Host::run(int throwAt, int cancelAt)
{
    *data_.script = Script{.throwAt = throwAt, .cancelAt = cancelAt};
    announcements.clear();
    ScriptedIter records = data_.records();
    return facade.BuildModel(records).GetErrorCode();
}

const ROCOutBase& Host::record() const { return *facade.GetOutputStats()->getROCBaseStats().at(0); }

int Host::Notify(ProgressReport& report)
{
    data_.script->enter(Script::notify, announcements)
        .emplace_back(report.DiscreteMeasure("records"), report.ScaleMeasure("percentage"));
    return 0;
}

bool Host::IsCancelRequested()
{
    const int query = calls(Script::cancelQuery);
    return data_.script->enter(Script::cancelQuery, query) == data_.script->cancelAt;
}

} // namespace roctest
