#include "driver/GroupSplit.h"

#include "host/Record.h"
#include "host/VexContVar.h"
#include "host/VexMV.h"

namespace ROCALG_920 {

using VexCommon_920::MultiPassRecordIter;
using VexCommon_920::Record;
using VexXML_920::IVexVariable;
using VexXML_920::VexContVar;
using VexXML_920::VexVarList;

namespace {

GroupValues middleOf(double min, double max)
{
    return {{(max + min) * 0.5}, min == max}; // a NaN counts as different
}

/// The middle of the values that occur.
GroupValues observedMiddle(MultiPassRecordIter& records, int groupVar)
{
    double max = 0.0;
    double min = 0.0;
    bool first = true;
    while (records.HasMore()) {
        const Record* const record = records.Next();
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
    records.NewPass();
    return middleOf(min, max);
}

/// From the host's range of the variable, or from the data when the host does not know it.
GroupValues middle(const IVexVariable& variable, MultiPassRecordIter& records, int groupVar)
{
    const auto* const continuous = dynamic_cast<const VexContVar*>(&variable);
    const double max = continuous != nullptr ? continuous->GetMax() : VexContVar::unknownMax;
    const double min = continuous != nullptr ? continuous->GetMin() : VexContVar::unknownMin;
    if (max == VexContVar::unknownMax || min == VexContVar::unknownMin) // exact: the host's words for unknown
        return observedMiddle(records, groupVar);
    return middleOf(min, max);
}

/// No values when the variable cannot be split as the settings ask.
GroupValues groupValues(const ROCSetting& setting, const IVexVariable& variable, MultiPassRecordIter& records)
{
    if (variable.GetValueType() == IVexVariable::twoValued)
        return {{0.0, 1.0}};
    switch (setting.getGroupType()) {
    case ROCConst_920::CutPointGroup: return {{setting.getGroupCutValue()}};
    case ROCConst_920::MidPointGroup:
        if (variable.GetVarType() != IVexVariable::continuous)
            return {};
        return middle(variable, records, setting.getGroupVar());
    case ROCConst_920::NoGroup:
    case ROCConst_920::SelectGroup: break;
    }
    return {setting.getGroupSelectValues(), setting.getGroupSelectValues().size() == 1};
}

} // namespace

GroupSplit::GroupSplit(const ROCSetting& setting, const VexVarList& variables, MultiPassRecordIter& records,
                       int groupVar)
    : groupVar_(groupVar), values_(groupValues(setting, *variables.GetVarAt(groupVar), records))
{
}

std::vector<ROCSpace> GroupSplit::spacesLike(const ROCSpace& empty) const
{
    std::vector<ROCSpace> spaces;
    const auto add = [&](ROCConst_920::Operation op, double value) {
        spaces.push_back(empty);
        spaces.back().setGroup(groupVar_, op, value);
    };
    const std::vector<double>& values = values_.values;
    if (groupVar_ < 0) {
        add(ROCConst_920::Equal, VexCommon_920::VexMV::Missing());
    } else if (values_.constant) {
        add(ROCConst_920::GreaterOrEqual, values[0]);
    } else if (values.size() == 1) {
        add(ROCConst_920::Less, values[0]);
        add(ROCConst_920::GreaterOrEqual, values[0]);
    } else {
        add(ROCConst_920::Equal, values[0]);
        add(ROCConst_920::Equal, values[1]);
    }
    return spaces;
}

} // namespace ROCALG_920
