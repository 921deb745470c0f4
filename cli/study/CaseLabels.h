#pragma once

#include "cli/study/ColumnLabels.h"
#include "cli/study/Question.h"

#include <optional>
#include <string>
#include <vector>

namespace vexroc {

/// What all labels that a question is about mean: those of the state, of groups, of slices. They are looked at over the
/// whole table, so that slices and groups cannot change it.
class CaseLabels {
public:
    /// Throws an input error when a value that the question names never occurs, when it is not said which values are
    /// negative, or when the group column does not hold the two values that make two groups.
    CaseLabels(const DataTable& table, const Question& question);

    /// Positive and negative.
    [[nodiscard]] const ColumnLabels& state() const noexcept { return state_; }
    /// The first group positive, the second negative; none without a group of words.
    [[nodiscard]] const std::optional<ColumnLabels>& group() const noexcept { return group_; }
    /// The words of the two groups.
    [[nodiscard]] const std::vector<std::string>& groupWords() const noexcept { return groupWords_; }
    [[nodiscard]] const std::optional<ColumnLabels>& by() const noexcept { return by_; }
    /// What there is to say of labels and of missing words and doubtful numbers in tests.
    void addRemarks(vexroc_remarks* remarks) const;

private:
    void addGroup(const DataTable& table, const Grouping& grouping);

    /// Cells of a column of numbers that a remark names.
    struct CellsToName {
        const char* code;
        std::string column;
        std::string cells;
    };
    ColumnLabels state_;
    std::optional<ColumnLabels> group_;
    std::vector<std::string> groupWords_;
    std::optional<ColumnLabels> by_;
    std::vector<CellsToName> cellsToName_;
};

} // namespace vexroc
