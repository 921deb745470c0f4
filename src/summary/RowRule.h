#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

/// Who takes part in an analysis, and as what: the one rule for every road that rows of columns come by.
namespace ROCALG_920 {

/// The whole cases that a weight stands for: the nearest integer, halves up; 0, and so none, for a weight that rounds
/// to less than one case, is not a number or is beyond the range of int.
[[nodiscard]] inline int wholeCases(double weight) noexcept
{
    const double rounded = std::floor(weight + 0.5);
    const bool isCountable = rounded >= 1.0 && rounded <= std::numeric_limits<int>::max();
    return isCountable ? static_cast<int>(rounded) : 0;
}

/// Does wholeCases leave this weight, which is a number, as it is (or drop it)?
[[nodiscard]] inline bool isWhole(double weight) noexcept { return std::floor(weight + 0.5) == weight; }

/// One row of columns that are indexed by column and then by row.
template <class Columns>
struct RowOf {
    const Columns& columns;
    std::size_t index;

    [[nodiscard]] double operator[](int column) const { return columns[static_cast<std::size_t>(column)][index]; }
};

/// How the values of a group column make groups.
///
/// None: all rows are one group. One value: the rows below it, and those at or above it; when the column is constant,
/// one group of all. Two values: the rows equal to the one and to the other; other rows are in neither.
struct GroupValues {
    std::vector<double> values;
    bool constant = false;

    /// Index of the group; -1 for neither.
    [[nodiscard]] int groupOf(double value) const noexcept
    {
        if (values.size() < 2)
            return !values.empty() && !constant && value >= values[0] ? 1 : 0; // NaN is not at or above anything
        if (value == values[0])
            return 0;
        return value == values[1] ? 1 : -1;
    }
};

/// Why a row does not take part, in the order in which the reasons are looked for; the first one counts.
enum class RowFate {
    missingCount,
    missingState,
    otherState,
    missingGroup,
    missingWeight,
    otherGroup,
    unusableWeight,
    incomplete,
    used
};

/// Has the row all that decides on it: state, group, weight and count, and a state that is one of the two?
[[nodiscard]] inline bool hasParts(RowFate fate) noexcept { return fate > RowFate::missingWeight; }

/// Does the row take part as far as state, group and weight decide?
[[nodiscard]] inline bool isUsable(RowFate fate) noexcept
{
    return fate == RowFate::incomplete || fate == RowFate::used;
}

/// What a row is to an analysis.
struct RowPart {
    bool positive; ///< by its state alone, whatever its fate
    int group;     ///< index; -1 for neither
    int cases;     ///< whole cases of its weight; 1 without weights
    RowFate fate;
};

/// The columns that decide on a row, and how strictly.
///
/// A row is anything that gives the value of a column as row[column]; any NaN is missing. A missing state that is not
/// required is negative; a missing group below every value; a missing weight unusable. A missing test leaves its row
/// out of that test alone, which is not decided here, unless all tests are needed.
struct RowRule {
    static constexpr int none = -1; ///< instead of a column

    int state = none;
    double positiveState = 1.0;                        ///< compared exactly
    std::optional<std::vector<double>> negativeStates; ///< none: all others; else compared exactly
    int group = none;
    GroupValues groups;
    int weight = none;
    int count = none; ///< the row stands for as many rows as this column says
    std::vector<int> tests;
    bool weightIsProbability = false; ///< inverse: any weight above 0 is one case
    bool needsParts = false;          ///< a row without state, group, weight or count is left out for it
    bool needsAllTests = false;       ///< a row takes part in all tests or in none

    template <class Row>
    [[nodiscard]] RowPart of(const Row& row) const
    {
        RowPart part{.positive = row[state] == positiveState, // NaN never equals
                     .group = group >= 0 ? groups.groupOf(row[group]) : 0,
                     .cases = casesOf(row),
                     .fate = RowFate::used};
        part.fate = fateOf(row, part);
        return part;
    }

    /// As how many rows the row counts; one without a count, as one that is left out.
    template <class Row>
    [[nodiscard]] std::int64_t repeats(const Row& row) const
    {
        return count < 0 || std::isnan(row[count]) ? 1 : static_cast<std::int64_t>(row[count]);
    }
    template <class Row>
    [[nodiscard]] bool lacksTest(const Row& row) const
    {
        return std::ranges::any_of(tests, [&](int test) { return std::isnan(row[test]); });
    }

private:
    template <class Row>
    [[nodiscard]] int casesOf(const Row& row) const
    {
        if (weight < 0)
            return 1;
        return weightIsProbability ? (row[weight] > 0.0 ? 1 : 0) : wholeCases(row[weight]);
    }
    [[nodiscard]] bool isListed(double value) const
    {
        return !negativeStates || std::ranges::find(*negativeStates, value) != negativeStates->end();
    }

    template <class Row>
    [[nodiscard]] RowFate fateOf(const Row& row, const RowPart& part) const
    {
        const auto isMissing = [&](int column) { return column >= 0 && std::isnan(row[column]); };
        if (needsParts && isMissing(count))
            return RowFate::missingCount;
        if (needsParts && isMissing(state))
            return RowFate::missingState;
        if (!part.positive && !isListed(row[state]))
            return RowFate::otherState;
        if (needsParts && isMissing(group))
            return RowFate::missingGroup;
        if (needsParts && isMissing(weight))
            return RowFate::missingWeight;
        if (part.group < 0)
            return RowFate::otherGroup;
        if (part.cases == 0)
            return RowFate::unusableWeight;
        return needsAllTests && lacksTest(row) ? RowFate::incomplete : RowFate::used;
    }
};

} // namespace ROCALG_920
