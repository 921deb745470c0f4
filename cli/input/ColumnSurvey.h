#pragma once

#include "cli/study/RowSink.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace vexroc {

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
    [[nodiscard]] std::size_t missing() const noexcept { return missing_; }
    [[nodiscard]] bool hasNumbers() const noexcept { return hasNumbers_; }
    [[nodiscard]] bool hasTexts() const noexcept { return hasTexts_; }
    /// Is every text a number when the decimal sign is the other one of point and comma?
    [[nodiscard]] bool hasOtherDecimals() const noexcept { return hasTexts_ && otherDecimals_; }
    /// Distinct values; numbers that are equal are one value, however they are spelled.
    [[nodiscard]] std::size_t distinct() const noexcept { return full_ ? seen_ : numbers_.size() + texts_.size(); }
    /// Are there more than distinct() says? Counting ends at mostDistinct values, or mostTextBytes.
    [[nodiscard]] bool hasMore() const noexcept { return full_; }
    /// Of the cells that are numbers; NaN where there is none.
    [[nodiscard]] double smallest() const noexcept { return hasNumbers_ ? smallest_ : none; }
    [[nodiscard]] double largest() const noexcept { return hasNumbers_ ? largest_ : none; }

    static constexpr std::size_t mostDistinct = 100'000;
    static constexpr std::size_t mostTextBytes = std::size_t{16} << 20;

private:
    static constexpr double none = std::numeric_limits<double>::quiet_NaN();
    void takeNumber(double number);
    void takeText(const std::string& text, char decimal);

    std::string name_;
    std::size_t missing_ = 0;
    bool hasNumbers_ = false;
    bool hasTexts_ = false;
    bool otherDecimals_ = true; ///< of the texts so far
    double smallest_ = std::numeric_limits<double>::infinity();
    double largest_ = -std::numeric_limits<double>::infinity();
    std::vector<double> numbers_; ///< distinct and ascending after settle; between, with what came since
    std::unordered_set<std::string> texts_;
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
