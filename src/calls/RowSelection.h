#pragma once

#include "summary/RowRule.h"
#include "vexrocproc/analysis.h"

#include <cstddef>
#include <span>
#include <vector>

namespace ROCALG_920::calls {

/// What became of the rows of columns, as callers are told it.
struct RowTally {
    /// Usable rows that lack the value of one test.
    struct UnknownTest {
        int column;
        long long positive;
        long long negative;
    };
    vexroc_rows rows{};
    std::vector<UnknownTest> gaps; ///< one per test, ascending by column

    /// Rows without state, group or weight.
    [[nodiscard]] long long withoutParts() const noexcept
    {
        return rows.missing_state + rows.missing_group + rows.missing_weight;
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
        ++rows.read;
        rows.usable += isUsable(rule.of(row).fate) ? 1 : 0;
    }
    return rows;
}

/// Counts rows by what becomes of them, and keeps those that have state, group and weight: what the analysis is given.
/// Copies the columns only when rows are left out.
class RowSelection {
public:
    /// The columns must outlive the object.
    RowSelection(std::vector<std::span<const double>> columns, const RowRule& rule);
    RowSelection(const RowSelection&) = delete;
    RowSelection& operator=(const RowSelection&) = delete;

    [[nodiscard]] const RowTally& counts() const noexcept { return counts_; }
    [[nodiscard]] const std::vector<std::span<const double>>& columns() const noexcept { return columns_; }

private:
    void copyRows(const std::vector<bool>& keep);

    std::vector<std::span<const double>> columns_;
    std::vector<std::vector<double>> copies_;
    RowTally counts_;
};

} // namespace ROCALG_920::calls
