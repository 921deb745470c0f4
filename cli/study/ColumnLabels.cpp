#include "cli/study/ColumnLabels.h"

#include "cli/study/require.h"
#include "cli/words/Failure.h"
#include "cli/words/MissingWords.h"
#include "cli/words/VisibleText.h"
#include "vexrocproc/analysis.h"

#include <array>
#include <limits>
#include <string_view>

namespace vexroc {

namespace {

/// The rows of each label.
std::vector<long long> rowsOf(const DataColumn& column)
{
    std::vector<long long> rows(column.labelTexts.size());
    for (const std::int32_t label : column.labels)
        if (label != DataColumn::missingLabel)
            ++rows[static_cast<std::size_t>(label)];
    return rows;
}

std::vector<const char*> pointersTo(const std::vector<std::string>& texts)
{
    std::vector<const char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(text.c_str());
    return pointers;
}

/// The value of --negative in a way on, which is a word of a shell.
std::string negativeIn(std::string_view way)
{
    constexpr std::string_view option = " --negative ";
    std::string value;
    bool quoted = false;
    const std::string_view word = way.substr(way.rfind(option) + option.size());
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] == '\'')
            quoted = !quoted;
        else
            value += !quoted && word[i] == '\\' && i + 1 < word.size() ? word[++i] : word[i];
    }
    return value;
}

} // namespace

ColumnLabels::ColumnLabels(const DataTable& table, const std::string& name, std::span<const std::string> named)
    : source_(table.source), column_(name)
{
    const DataColumn& column = table.column(name, ColumnKind::labels);
    vexroc_labels* labels = nullptr;
    require(vexroc_labels_new(name.c_str(), table.missingWords->list(), column.decimal, VEXROC_VOICE_PROGRAM, &labels));
    labels_.reset(labels);
    fill(column, named);
    require(vexroc_labels_settle(labels));
    readValues(column.labelTexts.size());
}

void ColumnLabels::fill(const DataColumn& column, std::span<const std::string> named)
{
    const std::vector<long long> rows = rowsOf(column);
    for (std::size_t label = 0; label < rows.size(); ++label) {
        const std::string& text = column.labelTexts[label];
        require(vexroc_labels_add(labels_.get(), text.data(), text.size(), VEXROC_LABEL_TEXT, rows[label], nullptr));
    }
    for (const std::string& text : named)
        require(vexroc_labels_name(labels_.get(), text.data(), text.size()));
}

void ColumnLabels::readValues(std::size_t labels)
{
    values_.clear();
    for (int v = 0; v < vexroc_labels_count(labels_.get()); ++v) {
        vexroc_label value{};
        value.struct_size = sizeof value;
        require(vexroc_labels_value(labels_.get(), v, &value));
        values_.push_back({{value.text, value.length}, value.count});
    }
    valueOf_.clear();
    for (int label = 0; label < static_cast<int>(labels); ++label) {
        valueOf_.push_back(vexroc_labels_value_of(labels_.get(), label));
        if (valueOf_.back() >= 0)
            values_[static_cast<std::size_t>(valueOf_.back())].state = vexroc_labels_state_of(labels_.get(), label);
    }
}

void ColumnLabels::choose(const StateChoice& choice, const CallLine& call)
{
    const std::vector<const char*> positive = pointersTo(choice.positive);
    const std::vector<const char*> negative = pointersTo(choice.negative);
    const bool isCut = !choice.sign.empty();
    const vexroc_state_choice asked{.struct_size = sizeof asked,
                                    .positive = positive.data(),
                                    .positive_count = static_cast<int>(positive.size()),
                                    .negative = negative.data(),
                                    .negative_count = static_cast<int>(negative.size()),
                                    .others = choice.others ? 1 : 0,
                                    .sign = isCut ? choice.sign.c_str() : nullptr,
                                    .bound = isCut ? choice.bound.c_str() : nullptr};
    const int result = vexroc_labels_choose(labels_.get(), &asked);
    if (result == VEXROC_INVALID)
        throw inputError(source_ + ": " + withCalls(vexroc_last_error(), call));
    require(result);
    readValues(valueOf_.size());
}

/// The library's ways on are options; a user is better served by whole calls, each on its line.
std::string ColumnLabels::withCalls(const std::string& message, const CallLine& call) const
{
    const char* const first = vexroc_labels_way_on(labels_.get(), 0);
    const char* const second = vexroc_labels_way_on(labels_.get(), 1);
    const std::size_t begin = first != nullptr ? message.rfind(first) : std::string::npos;
    if (begin == std::string::npos)
        return visible(message);
    std::string text = visible(message.substr(0, begin));
    text.pop_back(); // the blank at the end of the line
    for (const char* const way : {first, second})
        text += "\n  " + call.with("--negative", negativeIn(way)).text();
    return text;
}

std::string ColumnLabels::place() const { return source_ + ": column " + inQuotes(column_); }

int ColumnLabels::find(const std::string& text) const noexcept
{
    return vexroc_labels_find(labels_.get(), text.data(), text.size());
}

std::vector<double> ColumnLabels::codesOf(const DataColumn& column, double positive, double negative,
                                          double other) const
{
    constexpr double missing = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> codeOfLabel;
    for (const int value : valueOf_) {
        const vexroc_state state = value < 0 ? VEXROC_STATE_MISSING : values_[static_cast<std::size_t>(value)].state;
        const std::array codes{negative, positive, other, missing};
        codeOfLabel.push_back(codes[static_cast<std::size_t>(state)]);
    }
    std::vector<double> codes;
    codes.reserve(column.labels.size());
    for (const std::int32_t label : column.labels)
        codes.push_back(label == DataColumn::missingLabel ? missing : codeOfLabel[static_cast<std::size_t>(label)]);
    return codes;
}

void ColumnLabels::addRemarks(vexroc_remarks* remarks) const
{
    require(vexroc_labels_add_remarks(labels_.get(), remarks));
}

} // namespace vexroc
