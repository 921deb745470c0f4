#include "cli/input/ColumnSurvey.h"

#include "cli/words/Numbers.h"

#include <algorithm>
#include <numeric>

namespace vexroc {

void ColumnFacts::take(const Cell& cell, const NumberForm& form, const MissingWords& words)
{
    const std::optional<double> number = numberIn(cell, form);
    if ((!number || words.holdNumbers()) && isMissing(cell, words))
        ++missing_;
    else if (number)
        takeNumber(*number);
    else
        takeText(textOf(cell), form.decimal);
}

void ColumnFacts::takeNumber(double number)
{
    constexpr std::size_t batch = 4 * mostDistinct; // sorting batches beats looking up every number
    hasNumbers_ = true;
    smallest_ = std::min(smallest_, number);
    largest_ = std::max(largest_, number);
    if (full_)
        return;
    numbers_.push_back(number);
    if (numbers_.size() == batch)
        settle();
}

void ColumnFacts::takeText(const std::string& text, char decimal)
{
    hasTexts_ = true;
    otherDecimals_ = otherDecimals_ && parseNumber(text, decimal == ',' ? '.' : ',').has_value();
    if (full_ || !texts_.insert(text).second)
        return;
    textBytes_ += text.size();
    if (texts_.size() > mostDistinct || textBytes_ > mostTextBytes)
        settle();
}

void ColumnFacts::settle()
{
    std::ranges::sort(numbers_);
    numbers_.erase(std::unique(numbers_.begin(), numbers_.end()), numbers_.end());
    if (full_ || (distinct() <= mostDistinct && textBytes_ <= mostTextBytes))
        return;
    seen_ = std::min(distinct() - 1, mostDistinct);
    full_ = true;
    numbers_ = {};
    texts_ = {};
}

std::vector<std::size_t> ColumnSurvey::begin(const InputHeader& header)
{
    source_ = header.source;
    form_ = header.numbers;
    for (const std::string& name : header.columns)
        columns_.emplace_back(name);
    std::vector<std::size_t> all(columns_.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

bool ColumnSurvey::take(std::size_t column, const Cell& cell)
{
    columns_[column].take(cell, form_, *words_);
    return true;
}

const std::vector<ColumnFacts>& ColumnSurvey::finish()
{
    for (ColumnFacts& facts : columns_)
        facts.settle();
    return columns_;
}

} // namespace vexroc
