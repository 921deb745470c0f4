#pragma once

#include "cli/study/RowSink.h"

#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vexroc {

/// Different texts and the rows that hold them.
class WordCounts {
public:
    /// False when the word is another one of them.
    bool add(std::string_view word);
    [[nodiscard]] std::size_t size() const noexcept { return rowsOf_.size(); }
    [[nodiscard]] const auto& all() const noexcept { return rowsOf_; }
    void clear() { rowsOf_ = {}; }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
    };
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> rowsOf_;
};

struct Word {
    std::string text;
    std::size_t rows;
};

struct NumberInRows {
    double number;
    std::size_t rows;
};

/// The numbers at one end of a column.
class OuterNumbers {
public:
    explicit OuterNumbers(bool largest) : largest_(largest) {}
    void take(double number)
    {
        if (numbers_.size() < most || !isBeyond(numbers_.back().number, number))
            insert(number);
    }
    /// Outermost first.
    [[nodiscard]] const std::vector<NumberInRows>& numbers() const noexcept { return numbers_; }

private:
    static constexpr std::size_t most = 3;
    [[nodiscard]] bool isBeyond(double a, double b) const noexcept { return largest_ ? a > b : a < b; }
    void insert(double number);

    bool largest_;
    std::vector<NumberInRows> numbers_;
};

/// What one column of an input holds.
///
/// Life: take every cell, then settle, then ask.
/// Memory: at most 3.2 MB of numbers and 16 MiB of texts.
class ColumnFacts {
public:
    explicit ColumnFacts(std::string name) : name_(std::move(name)) {}
    void take(const Cell& cell, const NumberForm& form, const MissingWords& words);
    /// Makes what was taken a set of distinct values.
    void settle();

    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] std::size_t rows() const noexcept { return missing_ + numberRows_ + textRows_; }
    [[nodiscard]] std::size_t missing() const noexcept { return missing_; }
    [[nodiscard]] std::size_t known() const noexcept { return numberRows_ + textRows_; }
    [[nodiscard]] bool hasNumbers() const noexcept { return numberRows_ > 0; }
    [[nodiscard]] bool hasTexts() const noexcept { return textRows_ > 0; }
    /// Is every text a number when the decimal sign is the other one of point and comma?
    [[nodiscard]] bool hasOtherDecimals() const noexcept { return hasTexts() && otherDecimals_; }
    /// Distinct values; numbers that are equal are one value, however they are spelled.
    [[nodiscard]] std::size_t distinct() const noexcept { return full_ ? seen_ : numbers_.size() + texts_.size(); }
    /// Are there more than distinct() says? Counting ends at mostDistinct values, or mostTextBytes.
    [[nodiscard]] bool hasMore() const noexcept { return full_; }
    /// Of the cells that are numbers; NaN where there is none.
    [[nodiscard]] double smallest() const noexcept { return outermost(lowest_); }
    [[nodiscard]] double largest() const noexcept { return outermost(highest_); }
    [[nodiscard]] const OuterNumbers& lowest() const noexcept { return lowest_; }
    [[nodiscard]] const OuterNumbers& highest() const noexcept { return highest_; }
    [[nodiscard]] bool hasWholeNumbersOnly() const noexcept { return hasNumbers() && whole_; }
    /// Have the numbers no decimal sign, so that it may be any?
    [[nodiscard]] bool hasNoDecimals() const noexcept { return !decimals_; }
    /// Is no number smaller than the one before?
    [[nodiscard]] bool isAscending() const noexcept { return ascending_; }

    /// Texts that are no numbers, as long as they are counted.
    [[nodiscard]] const WordCounts& texts() const noexcept { return texts_; }
    /// Numbers as they are spelled; none where there are more than mostSpelledNumbers.
    [[nodiscard]] const WordCounts& spelledNumbers() const noexcept { return spelledNumbers_; }
    [[nodiscard]] const WordCounts& missingWords() const noexcept { return missingWords_; }
    /// Are all texts and numbers there as they are spelled?
    [[nodiscard]] bool knowsAllWords() const noexcept { return !full_ && !manyNumbers_; }
    /// Texts and, where they are there, numbers; the commonest first.
    [[nodiscard]] std::vector<Word> words() const;
    /// The first text that is not UTF-8; empty where all are.
    [[nodiscard]] const std::string& undecodable() const noexcept { return undecodable_; }

    static constexpr std::size_t mostDistinct = 100'000;
    static constexpr std::size_t mostTextBytes = std::size_t{16} << 20;
    static constexpr std::size_t mostSpelledNumbers = 16;
    static constexpr std::size_t mostMissingWords = 64;

private:
    static double outermost(const OuterNumbers& end)
    {
        return end.numbers().empty() ? std::numeric_limits<double>::quiet_NaN() : end.numbers().front().number;
    }
    void takeMissing(const Cell& cell);
    void takeNumber(double number);
    void spellNumber(std::string_view text);
    void takeText(const std::string& text, char decimal);

    std::string name_;
    std::size_t missing_ = 0;
    std::size_t numberRows_ = 0;
    std::size_t textRows_ = 0;
    bool otherDecimals_ = true; ///< of the texts so far
    bool whole_ = true;         ///< are the numbers?
    bool decimals_ = false;     ///< is there a decimal sign in a number?
    bool ascending_ = true;
    double last_ = -std::numeric_limits<double>::infinity(); ///< number
    OuterNumbers lowest_{false};
    OuterNumbers highest_{true};
    std::vector<double> numbers_; ///< distinct and ascending after settle; between, with what came since
    WordCounts spelledNumbers_;
    bool manyNumbers_ = false; ///< to be spelled
    WordCounts texts_;
    WordCounts missingWords_; ///< but empty ones
    std::string undecodable_;
    std::size_t textBytes_ = 0;
    bool full_ = false;    ///< no more values are told apart
    std::size_t seen_ = 0; ///< distinct values when it became full
};

/// Looks at all columns of an input and keeps nothing of it but the facts.
class ColumnSurvey final : public RowSink {
public:
    explicit ColumnSurvey(std::shared_ptr<const MissingWords> words) : words_(std::move(words)) {}

    std::vector<std::size_t> begin(const InputHeader& header) override;
    bool take(std::size_t column, const Cell& cell) override;

    [[nodiscard]] const std::string& source() const noexcept { return source_; }
    /// Once all rows are taken.
    const std::vector<ColumnFacts>& finish();

private:
    std::shared_ptr<const MissingWords> words_;
    std::string source_;
    NumberForm form_;
    std::vector<ColumnFacts> columns_;
};

} // namespace vexroc
