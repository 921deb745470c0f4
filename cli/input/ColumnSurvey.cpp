#include "cli/input/ColumnSurvey.h"

#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vexroc {

bool WordCounts::add(std::string_view word)
{
    if (const auto known = rowsOf_.find(word); known != rowsOf_.end()) {
        ++known->second;
        return true;
    }
    rowsOf_.emplace(word, 1);
    return false;
}

void OuterNumbers::insert(double number)
{
    const auto place =
        std::ranges::find_if(numbers_, [&](const NumberInRows& known) { return !isBeyond(known.number, number); });
    if (place != numbers_.end() && place->number == number) {
        ++place->rows;
        return;
    }
    numbers_.insert(place, {number, 1});
    if (numbers_.size() > most)
        numbers_.pop_back();
}

void ColumnFacts::take(const Cell& cell, const NumberForm& form, const MissingWords& words)
{
    const std::optional<double> number = numberIn(cell, form);
    if ((!number || words.holdNumbers()) && isMissing(cell, words))
        return takeMissing(cell);
    if (!number)
        return takeText(textOf(cell), form.decimal);
    takeNumber(*number);
    if (manyNumbers_ && decimals_)
        return;
    const std::string text = textOf(cell);
    decimals_ = decimals_ || text.find(form.decimal) != std::string::npos;
    if (!manyNumbers_)
        spellNumber(text);
}

void ColumnFacts::takeMissing(const Cell& cell)
{
    ++missing_;
    const std::string text = textOf(cell);
    if (const std::string_view word = trimmed(text); !word.empty() && missingWords_.size() < mostMissingWords)
        missingWords_.add(word);
}

void ColumnFacts::takeNumber(double number)
{
    constexpr std::size_t batch = 4 * mostDistinct; // sorting batches beats looking up every number
    ++numberRows_;
    lowest_.take(number);
    highest_.take(number);
    whole_ = whole_ && number == std::floor(number);
    ascending_ = ascending_ && number >= last_;
    last_ = number;
    if (full_)
        return;
    numbers_.push_back(number);
    if (numbers_.size() == batch)
        settle();
}

void ColumnFacts::spellNumber(std::string_view text)
{
    spelledNumbers_.add(text);
    manyNumbers_ = spelledNumbers_.size() > mostSpelledNumbers;
    if (manyNumbers_)
        spelledNumbers_.clear();
}

void ColumnFacts::takeText(const std::string& text, char decimal)
{
    ++textRows_;
    if (full_) {
        otherDecimals_ = otherDecimals_ && parseNumber(text, decimal == ',' ? '.' : ',').has_value();
        return;
    }
    if (texts_.add(text))
        return;
    otherDecimals_ = otherDecimals_ && parseNumber(text, decimal == ',' ? '.' : ',').has_value();
    if (undecodable_.empty() && !isUtf8(text))
        undecodable_ = text;
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
    texts_.clear();
}

std::vector<Word> ColumnFacts::words() const
{
    std::vector<Word> words;
    for (const WordCounts* const counts : {&texts_, &spelledNumbers_})
        for (const auto& [text, rows] : counts->all())
            words.push_back({text, rows});
    std::ranges::sort(
        words, [](const Word& a, const Word& b) { return a.rows != b.rows ? a.rows > b.rows : a.text < b.text; });
    return words;
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
