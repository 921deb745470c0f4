#pragma once

#include "cli/study/CaseLabels.h"
#include "cli/study/DataTable.h"
#include "cli/study/Question.h"

#include <span>
#include <string>
#include <vector>

namespace vexroc {

/// The columns of a table as the component takes them: numbers, NaN where a cell is missing.
///
/// Words become codes: of states positive, negative, and a third for the others; of a group those of the two groups,
/// and a third for the others. Columns of numbers are those of the table, which must outlive the object.
class CaseColumns {
public:
    static constexpr double positiveState = 1.0;
    static constexpr double negativeState = 0.0;
    static constexpr double otherState = 2.0;
    static constexpr double firstGroup = 0.0;
    static constexpr double secondGroup = 1.0;
    static constexpr double otherGroup = 2.0;

    /// The labels are those of the table, or of the table that it is a slice of, and outlive the object.
    CaseColumns(const DataTable& table, const CaseLabels& labels, const Question& question);

    [[nodiscard]] std::size_t rows() const noexcept { return state_.size(); }
    [[nodiscard]] std::span<const double> state() const noexcept { return state_; }
    /// Empty without a grouping, like weights and counts.
    [[nodiscard]] std::span<const double> group() const noexcept { return group_; }
    [[nodiscard]] std::span<const double> weight() const noexcept { return weight_; }
    [[nodiscard]] std::span<const double> count() const noexcept { return count_; }
    [[nodiscard]] std::span<const double> test(const std::string& name) const { return table_.numbers(name); }
    /// How the words of the two groups read; empty where the group column is split as numbers.
    [[nodiscard]] std::span<const std::string> groupWords() const noexcept { return groupWords_; }

private:
    const DataTable& table_;
    std::vector<double> state_;
    std::vector<double> codes_; ///< of a group of words
    std::span<const double> group_;
    std::span<const double> weight_;
    std::span<const double> count_;
    std::span<const std::string> groupWords_;
};

} // namespace vexroc
