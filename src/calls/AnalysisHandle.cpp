#include "calls/AnalysisHandle.h"

#include "driver/RunFailure.h"
#include "host/ColumnRecordIter.h"
#include "host/FunctionListener.h"
#include "host/VexQueryCancel.h"
#include "vexrocproc/ROCOutputs.h"
#include "vexrocproc/ROCStatusCodes.h"
#include "vexrocproc/optionwords.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace ROCALG_920 {

namespace {

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

/// Position of the word in the list, whatever the case of its letters. Throws with the whole list.
template <std::size_t N>
int positionOf(std::string_view word, const std::array<std::string_view, N>& words, std::string_view setting)
{
    std::string all;
    for (std::size_t i = 0; i < N; ++i) {
        if (compareIgnoreCase(std::string(word), std::string(words[i])))
            return static_cast<int>(i);
        all += (i == 0 ? "" : ", ") + quoted(words[i]);
    }
    throw InvalidArgument(std::string(setting) + ": no word " + quoted(word) + "; the words are " + all);
}

[[noreturn]] void unknownSetting(std::string_view setting, const char* kind, const char* names)
{
    throw InvalidArgument("no setting " + quoted(setting) + " takes a " + kind + "; those that do are " + names);
}

/// As the library displays it; it has no names for the ends that are no fault of the settings or the data.
std::string nameOf(int code)
{
    if (code == statusCode::cancelled)
        return "Cancelled";
    if (code == statusCode::unexpected)
        return "Unexpected_Failure";
    std::string name;
    ROCComponentDisplay::ParseErrCodeToStr(code, name);
    return name;
}

class CancelCallback final : public VexCommon_920::VexQueryCancel {
public:
    CancelCallback(vexroc_cancel callback, void* user) : callback_(callback), user_(user) {}
    bool IsCancelRequested() override { return callback_(user_) != 0; }

private:
    vexroc_cancel callback_;
    void* user_;
};

} // namespace

int AnalysisRequest::addColumn(std::string_view name, std::span<const double> values)
{
    if (!columns_.empty() && values.size() != columns_.front().values.size())
        throw InvalidArgument("column " + quoted(name) + " has " + std::to_string(values.size())
                              + " rows; the columns before it have " + std::to_string(columns_.front().values.size()));
    columns_.push_back({std::string(name), values});
    return static_cast<int>(columns_.size()) - 1;
}

void AnalysisRequest::setColumn(std::string_view setting, int column)
{
    if (column < none || (column >= 0 && static_cast<std::size_t>(column) >= columns_.size()))
        throw InvalidArgument(std::string(setting) + ": no column " + std::to_string(column) + "; there are "
                              + std::to_string(columns_.size()));
    if (setting == "state")
        state_ = column;
    else if (setting == "test")
        setTest(column);
    else if (setting == "group")
        setGroupColumn(column);
    else if (setting == "weight")
        weight_ = column;
    else
        unknownSetting(setting, "column", "state, test, group, weight");
}

void AnalysisRequest::setTest(int column)
{
    if (column == none)
        tests_.clear();
    else
        tests_.push_back(column);
}

void AnalysisRequest::setGroupColumn(int column)
{
    group_ = column;
    if (column == none)
        split_ = {};
}

void AnalysisRequest::setSelectedGroup(std::optional<double> Split::*place, double value)
{
    split_ = {.first = split_.first, .second = split_.second};
    split_.*place = value;
}

void AnalysisRequest::setNumber(std::string_view setting, double value)
{
    if (std::isnan(value))
        throw InvalidArgument(std::string(setting) + ": NaN is missing and no number; give one");
    if (setting == "positive_value")
        positiveValue_ = value;
    else if (setting == "group_cut")
        split_ = {.cut = value};
    else if (setting == "group_first")
        setSelectedGroup(&Split::first, value);
    else if (setting == "group_second")
        setSelectedGroup(&Split::second, value);
    else if (setting == "group_mid_point" && value != 0.0)
        split_ = {.midPoint = true};
    else if (setting == "group_mid_point")
        split_.midPoint = false;
    else if (setting == "roc")
        options_.setNeedROC(value != 0.0);
    else if (setting == "pr")
        options_.setNeedPR(value != 0.0);
    else if (setting == "confidence_level" && value > 0.0 && value < 1.0)
        options_.setConfidenceLevel(value);
    else if (setting == "confidence_level")
        throw InvalidArgument("confidence_level: expected a number between 0 and 1, such as 0.95");
    else
        unknownSetting(setting, "number",
                       "positive_value, confidence_level, group_cut, group_first, group_second, group_mid_point, roc, "
                       "pr");
}

void AnalysisRequest::setWord(std::string_view setting, std::string_view word)
{
    using namespace ROCConst_920;
    using Pair = std::array<std::string_view, 2>;
    if (setting == "direction")
        options_.setDirection(Direction(positionOf(word, Pair{"larger", "smaller"}, setting)));
    else if (setting == "cut_off")
        options_.setClassification(Classification(positionOf(word, Pair{"include", "exclude"}, setting)));
    else if (setting == "distribution")
        options_.setDistribution(Distribution(positionOf(word, Pair{"nonparam", "bi-negative"}, setting)));
    else if (setting == "interpolation")
        options_.setPRInterpolationType(
            PRInterpolation(positionOf(word, Pair{"davis-goadrich", "keilwagen"}, setting)));
    else if (setting == "comparison")
        options_.setComparisonType(ComparisonType(
            positionOf(word, std::array<std::string_view, 3>{"none", "independent", "paired"}, setting)));
    else
        unknownSetting(setting, "word", "direction, cut_off, distribution, interpolation, comparison");
}

void AnalysisRequest::setGroup(ROCSetting& setting) const
{
    if (group_ == none && split_ != Split{})
        throw InvalidArgument("groups are split by a column: set \"group\"");
    if (group_ == none)
        return;
    if (split_ == Split{} || split_.first.has_value() != split_.second.has_value())
        throw InvalidArgument("a group needs one of group_cut, group_first with group_second, and group_mid_point");
    if (split_.first && *split_.first == *split_.second)
        throw InvalidArgument("group_first and group_second are the same value; give two");
    if (split_.cut)
        setting.setCutOffGroupVar(group_, *split_.cut);
    else if (split_.midPoint)
        setting.setMidPointGroupVar(group_);
    else
        setting.setSelectGroupVar(group_, *split_.first, *split_.second);
}

ROCSetting AnalysisRequest::setting() const
{
    if (state_ == none)
        throw InvalidArgument("no state: set the column \"state\"");
    if (tests_.empty())
        throw InvalidArgument("no test: set the column \"test\" for each test variable");
    if (std::ranges::find(tests_, state_) != tests_.end())
        throw InvalidArgument("test: column " + quoted(columns_[static_cast<std::size_t>(state_)].name)
                              + " is the state; a test is another column");
    ROCSetting setting = options_;
    setting.setStateVar(state_, positiveValue_);
    setting.setTestVars(tests_);
    setting.setFrequencyWeightVar(weight_);
    setGroup(setting);
    return setting;
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

std::vector<int> AnalysisRequest::requiredColumns() const
{
    std::vector<int> columns{state_, group_, weight_};
    std::erase(columns, none);
    return columns;
}

CompleteRows::CompleteRows(std::vector<std::span<const double>> columns, const std::vector<int>& required)
    : columns_(std::move(columns))
{
    const std::size_t rows = columns_.front().size();
    const auto isComplete = [&](std::size_t row) {
        return std::ranges::none_of(
            required, [&](int column) { return std::isnan(columns_[static_cast<std::size_t>(column)][row]); });
    };
    std::vector<bool> complete(rows);
    for (std::size_t row = 0; row < rows; ++row)
        complete[row] = isComplete(row);
    leftOut_ = static_cast<int>(std::ranges::count(complete, false));
    if (leftOut_ == 0)
        return;
    for (std::span<const double>& column : columns_) {
        std::vector<double>& copy = copies_.emplace_back();
        copy.reserve(rows - static_cast<std::size_t>(leftOut_));
        for (std::size_t row = 0; row < rows; ++row)
            if (complete[row])
                copy.push_back(column[row]);
        column = copy;
    }
}

AnalysisRun::AnalysisRun(const AnalysisRequest& request, const Callbacks& callbacks) : variables_(request.variables())
{
    ROCSetting setting = request.setting();
    algorithm_ = std::make_unique<RocAlgorithm>(setting, variables_);
    CancelCallback cancel(callbacks.cancel, callbacks.cancelUser);
    VexCommon_920::FunctionListener listener([&callbacks](VexCommon_920::ProgressReport& report) {
        callbacks.progress(report.ScaleMeasure("percentage"), report.DiscreteMeasure("records"),
                           callbacks.progressUser);
    });
    algorithm_->SetCancelPtr(callbacks.cancel != nullptr ? &cancel : nullptr);
    algorithm_->SetProgressListener(callbacks.progress != nullptr ? &listener : nullptr);
    const CompleteRows rows(request.columns(), request.requiredColumns());
    leftOut_ = rows.leftOut();
    VexCommon_920::ColumnRecordIter records(rows.columns());
    statusCode_ = static_cast<int>(algorithm_->BuildModel(records).GetErrorCode());
    algorithm_->SetCancelPtr(nullptr);
    algorithm_->SetProgressListener(nullptr);
    ranOutOfMemory_ = RunFailure::ranOutOfMemory(*algorithm_);
    statusName_ = nameOf(statusCode_);
    const VexCommon_920::VexWarnings& warnings = algorithm_->GetWarningMessages();
    for (int i = 0; i < warnings.GetCount(); ++i) {
        const int code = static_cast<int>(warnings.GetStatus(i).GetErrorCode());
        warnings_.push_back({code, nameOf(code), {}});
        for (const auto& parameter : warnings.GetParameters(i))
            warnings_.back().parameters.push_back(parameter.GetInt());
    }
}

std::span<ROCOutBase* const> AnalysisRun::records() const noexcept
{
    const ROCOutputs* const outputs = algorithm_->GetOutputStats();
    return outputs != nullptr ? std::span<ROCOutBase* const>(outputs->getROCBaseStats())
                              : std::span<ROCOutBase* const>();
}

std::span<ROCComparisonOutStats* const> AnalysisRun::comparisons() const noexcept
{
    const ROCOutputs* const outputs = algorithm_->GetOutputStats();
    return outputs != nullptr ? std::span<ROCComparisonOutStats* const>(outputs->getROCComparisonStats())
                              : std::span<ROCComparisonOutStats* const>();
}

} // namespace ROCALG_920
