#include "calls/AnalysisRequest.h"

#include "calls/guard.h"
#include "inference/Bootstrap.h"

#include <algorithm>
#include <cmath>

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

void AnalysisRequest::listNegatives(bool on)
{
    if (!on)
        negativeValues_.reset();
    else if (!negativeValues_)
        negativeValues_.emplace();
}

void AnalysisRequest::addNegative(double value)
{
    listNegatives(true);
    negativeValues_->push_back(value);
}

void AnalysisRequest::setDirection(int column, std::optional<ROCConst_920::Direction> direction)
{
    if (direction)
        directions_[column] = *direction;
    else
        directions_.erase(column);
}

void AnalysisRequest::check() const
{
    checkParts();
    checkStates();
    checkSplit();
    checkInference();
    checkProbabilities();
}

void AnalysisRequest::checkParts() const
{
    if (state_ == none)
        throw InvalidArgument("no state: set the column \"state\"");
    if (tests_.empty())
        throw InvalidArgument("no test: set the column \"test\" for each test variable");
    if (std::ranges::find(tests_, state_) != tests_.end())
        throw InvalidArgument("test: column " + quoted(nameOf(state_)) + " is the state; a test is another column");
    for (const auto& [column, direction] : directions_)
        if (std::ranges::find(tests_, column) == tests_.end())
            throw InvalidArgument("direction: column " + quoted(nameOf(column))
                                  + " is no test; take it back with null");
    if (count_ != none && weight_ != none)
        throw InvalidArgument("count and weight: a run takes one of them; \"count\" is the number of cases that a row "
                              "stands for in all results, \"weight\" in the numbers of cases alone");
}

void AnalysisRequest::checkStates() const
{
    if (!negativeValues_)
        return;
    if (negativeValues_->empty())
        throw InvalidArgument("negative: no state is listed; add each with vexroc_analysis_add_negative");
    if (std::ranges::find(*negativeValues_, positiveValue_) != negativeValues_->end())
        throw InvalidArgument("negative: " + shortest(positiveValue_) + " is the positive state as well");
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

void AnalysisRequest::checkInference() const
{
    const bool isBiNegative = options_.getDistribution() == ROCConst_920::BiNegativeExponential;
    if (isBiNegative && interval_ != IntervalKind::recommended && !hasErrorOfDistribution())
        throw InvalidArgument("bi-negative is an assumption behind the standard error of the interval wald; take that, "
                              "or leave bi-negative out");
    if (isBiNegative && p_ == PKind::mannWhitney)
        throw InvalidArgument("mann-whitney makes no assumption of bi-negative; take the p value by wald, or leave "
                              "bi-negative out");
    constexpr double tested = 0.5;
    if (nullArea_ != tested && p_ == PKind::mannWhitney)
        throw InvalidArgument("mann-whitney tests the area 0.5 alone; against " + shortest(nullArea_)
                              + " take the p value by wald");
    if (nullArea_ != tested && p_ == PKind::record)
        throw InvalidArgument("null_area: the p value of a record is against 0.5; for " + shortest(nullArea_)
                              + " set \"p_value\" to wald or recommended");
    const double level = options_.getConfidienceLevel();
    const bool draws = interval_ == IntervalKind::bootstrap || interval_ == IntervalKind::bca;
    if (draws && !enoughReplicates(static_cast<std::size_t>(replicates_), level))
        throw InvalidArgument("replicates: " + std::to_string(replicates_) + " are too few for limits of the level "
                              + shortest(level) + "; take at least " + shortest(std::ceil(2.0 / (1.0 - level) - 1.0)));
}

void AnalysisRequest::checkProbabilities() const
{
    if (!hasProbabilities())
        return;
    if (weight_ == none)
        throw InvalidArgument("probability is a kind of weights, and there are none; name their column");
    if (interval() != IntervalKind::logit && interval() != IntervalKind::waldDelong)
        throw InvalidArgument("with weights that are inverse sampling probabilities the intervals are logit, which is "
                              "recommended, and wald-delong; cases alone do not tell what the others ask of a sample");
    if (pValue() == PKind::mannWhitney)
        throw InvalidArgument("mann-whitney is not defined for weights that are inverse sampling probabilities; take "
                              "the p value by wald");
    if (isPaired())
        throw InvalidArgument("a paired comparison is not defined for weights that are inverse sampling probabilities; "
                              "the areas of the tests are");
}

IntervalKind AnalysisRequest::interval() const noexcept
{
    if (interval_ != IntervalKind::recommended)
        return interval_;
    if (options_.getDistribution() == ROCConst_920::BiNegativeExponential)
        return IntervalKind::wald;
    return hasProbabilities() ? IntervalKind::logit : IntervalKind::score;
}

PKind AnalysisRequest::pValue() const noexcept
{
    if (p_ != PKind::recommended)
        return p_;
    const bool hasRanks =
        nullArea_ == 0.5 && !hasProbabilities() && options_.getDistribution() != ROCConst_920::BiNegativeExponential;
    return hasRanks ? PKind::mannWhitney : PKind::wald;
}

void AnalysisRequest::setGroup(ROCSetting& setting, int index) const
{
    if (split_.cut)
        setting.setCutOffGroupVar(index, *split_.cut);
    else if (split_.midPoint)
        setting.setMidPointGroupVar(index);
    else
        setting.setSelectGroupVar(index, *split_.first, *split_.second);
}

bool AnalysisRequest::isPaired() const noexcept
{
    return options_.getComparisonType() == ROCConst_920::PairedComparison;
}

ROCConst_920::Direction AnalysisRequest::directionOf(int test) const
{
    const auto found = directions_.find(test);
    if (found != directions_.end())
        return found->second;
    return options_.isLargerTestMorePositive() ? ROCConst_920::LargerMorePositive : ROCConst_920::SmallerMorePositive;
}

bool AnalysisRequest::hasOneDirection() const
{
    return std::ranges::all_of(tests_, [this](int test) { return directionOf(test) == directionOf(tests_.front()); });
}

std::string AnalysisRequest::valueInWords(int column, double value) const
{
    const auto found = valueNames_.find({column, value});
    return found != valueNames_.end() ? found->second : shortest(value);
}

RowRule AnalysisRequest::rowRule() const
{
    RowRule rule;
    rule.state = state_;
    rule.positiveState = positiveValue_;
    rule.negativeStates = negativeValues_;
    rule.group = group_;
    rule.weight = weight_;
    rule.weightIsProbability = hasProbabilities();
    rule.count = count_;
    rule.tests = tests_;
    rule.needsParts = true;
    rule.needsAllTests = isPaired() && pairedRows_ == PairedRows::complete;
    if (split_.first && split_.second && !isPaired()) // a paired comparison has no groups
        rule.groups.values = {*split_.first, *split_.second};
    std::ranges::sort(rule.tests);
    rule.tests.erase(std::unique(rule.tests.begin(), rule.tests.end()), rule.tests.end());
    return rule;
}

std::vector<std::span<const double>> AnalysisRequest::columns() const
{
    std::vector<std::span<const double>> columns;
    for (const Column& column : columns_)
        columns.push_back(column.values);
    return columns;
}

} // namespace ROCALG_920::calls
