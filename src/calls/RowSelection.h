#pragma once

#include "summary/RowRule.h"
#include "vexrocproc/analysis.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace ROCALG_920::calls {

/// What became of the rows of columns, as callers are told it. A row counts as often as its count says.
struct RowTally {
    /// Usable rows that lack the value of one test.
    struct UnknownTest {
        int column;
        long long positive;
        long long negative;
        [[nodiscard]] long long rows() const noexcept { return positive + negative; }
    };
    vexroc_rows rows{};
    std::vector<UnknownTest> gaps; ///< one per test, ascending by column
    long long lackingSomeTest = 0; ///< usable rows
    bool moreThanTwoStates = false;

    /// Rows without state, group, weight or count, or in another state.
    [[nodiscard]] long long withoutParts() const noexcept
    {
        return rows.missing_state + rows.missing_group + rows.missing_weight + rows.missing_count + rows.other_state;
    }
    [[nodiscard]] long long usable() const noexcept { return rows.positive + rows.negative + rows.incomplete; }
    /// Is every test missing in the same rows?
    [[nodiscard]] bool gapsAreEqual() const noexcept
    {
        return std::ranges::all_of(gaps, [this](const UnknownTest& gap) { return gap.rows() == lackingSomeTest; });
    }
};

/// The rows of one group.
struct GroupRows {
    long long read = 0;   ///< whether they take part or not
    long long usable = 0; ///< used, or incomplete
};

/// The rows for whose group value isMember holds.
template <class IsMember>
[[nodiscard]] GroupRows countMembers(const std::vector<std::span<const double>>& columns, const RowRule& rule,
                                     IsMember&& isMember)
{
    GroupRows rows;
    for (std::size_t i = 0; i < columns.front().size(); ++i) {
        const RowOf<std::vector<std::span<const double>>> row{columns, i};
        if (!isMember(row[rule.group]))
            continue;
        rows.read += rule.repeats(row);
        rows.usable += isUsable(rule.of(row).fate) ? rule.repeats(row) : 0;
    }
    return rows;
}

/// Counts rows by what becomes of them, and keeps those that have all their parts, as often as their count says: what
/// the analysis is given. Copies the columns only when rows are left out or repeated.
class RowSelection {
public:
    /// The columns must outlive the object. Throws where a count is none, or a weight no inverse probability, with
    /// the name of their column.
    RowSelection(std::vector<std::span<const double>> columns, const RowRule& rule, std::string_view weighingName);
    RowSelection(const RowSelection&) = delete;
    RowSelection& operator=(const RowSelection&) = delete;

    [[nodiscard]] const RowTally& counts() const noexcept { return counts_; }
    [[nodiscard]] const std::vector<std::span<const double>>& columns() const noexcept { return columns_; }
    /// From here on the tests of a row that lacks one of them are all missing.
    void blankIncomplete(const RowRule& rule);

private:
    void copyRows(const std::vector<std::int32_t>& times);

    std::vector<std::span<const double>> columns_;
    std::vector<std::vector<double>> copies_; ///< of columns, where they are not those of the caller
    RowTally counts_;
};

} // namespace ROCALG_920::calls
