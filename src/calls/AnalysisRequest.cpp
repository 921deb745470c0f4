#include "calls/AnalysisRequest.h"

#include "calls/guard.h"

#include <algorithm>

namespace ROCALG_920::calls {

int AnalysisRequest::addColumn(std::string_view name, std::span<const double> values)
{
    if (!columns_.empty() && values.size() != columns_.front().values.size())
        throw InvalidArgument("column " + quoted(name) + " has " + std::to_string(values.size())
                              + " rows; the columns before it have " + std::to_string(columns_.front().values.size()));
    columns_.push_back({std::string(name), values});
    return static_cast<int>(columns_.size()) - 1;
}

void AnalysisRequest::addTest(int column)
{
    if (column == none)
        tests_.clear();
    else
        tests_.push_back(column);
}

void AnalysisRequest::setGroup(int column)
{
    group_ = column;
    if (column == none)
        split_ = {};
}

void AnalysisRequest::splitInTheMiddle(bool on)
{
    if (on)
        split_ = {.midPoint = true};
    else
        split_.midPoint = false;
}

void AnalysisRequest::checkParts() const
{
    if (state_ == none)
        throw InvalidArgument("no state: set the column \"state\"");
    if (tests_.empty())
        throw InvalidArgument("no test: set the column \"test\" for each test variable");
    if (std::ranges::find(tests_, state_) != tests_.end())
        throw InvalidArgument("test: column " + quoted(columns_[static_cast<std::size_t>(state_)].name)
                              + " is the state; a test is another column");
}

void AnalysisRequest::checkSplit() const
{
    if (group_ == none && split_ != Split{})
        throw InvalidArgument("groups are split by a column: set \"group\"");
    if (group_ == none)
        return;
    if (split_ == Split{} || split_.first.has_value() != split_.second.has_value())
        throw InvalidArgument("a group needs one of group_cut, group_first with group_second, and group_mid_point");
    if (split_.first && *split_.first == *split_.second)
        throw InvalidArgument("group_first and group_second are the same value; give two");
}

void AnalysisRequest::setGroup(ROCSetting& setting) const
{
    if (group_ == none)
        return;
    if (split_.cut)
        setting.setCutOffGroupVar(group_, *split_.cut);
    else if (split_.midPoint)
        setting.setMidPointGroupVar(group_);
    else
        setting.setSelectGroupVar(group_, *split_.first, *split_.second);
}

ROCSetting AnalysisRequest::setting() const
{
    checkParts();
    checkSplit();
    ROCSetting setting = options_;
    setting.setStateVar(state_, positiveValue_);
    setting.setTestVars(tests_);
    setting.setFrequencyWeightVar(weight_);
    setGroup(setting);
    return setting;
}

RowRule AnalysisRequest::rowRule() const
{
    const bool paired = options_.getComparisonType() == ROCConst_920::PairedComparison;
    RowRule rule;
    rule.state = state_;
    rule.positiveState = positiveValue_;
    rule.group = group_;
    rule.weight = weight_;
    rule.tests = tests_;
    rule.needsParts = true;
    rule.needsAllTests = paired;
    if (split_.first && split_.second && !paired) // a paired comparison has no groups
        rule.groups.values = {*split_.first, *split_.second};
    std::ranges::sort(rule.tests);
    rule.tests.erase(std::unique(rule.tests.begin(), rule.tests.end()), rule.tests.end());
    return rule;
}

VexXML_920::VexVarList AnalysisRequest::variables() const
{
    VexXML_920::VexVarList variables;
    for (const Column& column : columns_)
        variables.AddContinuous(column.name);
    return variables;
}

std::vector<std::span<const double>> AnalysisRequest::columns() const
{
    std::vector<std::span<const double>> columns;
    for (const Column& column : columns_)
        columns.push_back(column.values);
    return columns;
}

} // namespace ROCALG_920::calls
