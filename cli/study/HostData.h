#pragma once

#include "cli/study/Sample.h"
#include "host/VexVarList.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vexroc {

/// How a group column splits the cases.
struct GroupSplit {
    enum class By {
        values, ///< by the two values that the column holds
        select, ///< by two values of several
        cut,    ///< below a value, and from it on
        midPoint,
    };
    std::string column;
    By by = By::values;
    std::vector<std::string> selected; ///< two for select
    double cut = 0.0;
};

/// Which columns play which part in an analysis.
struct Roles {
    ValueChoice state; ///< one value, that of the positive cases
    std::vector<std::string> tests;
    std::optional<GroupSplit> group;
    std::string weight;  ///< empty for none
    bool paired = false; ///< a paired comparison: no groups, and only cases in which all tests are known
};

/// What became of the rows read. Each is counted once: in the first reason to leave it out, or as used.
struct RowCounts {
    std::size_t read = 0;
    std::size_t missingState = 0;
    std::size_t missingGroup = 0;
    std::size_t missingWeight = 0;
    std::size_t otherGroup = 0;    ///< in neither of the groups
    std::size_t withoutWeight = 0; ///< the weight rounds to less than one case, or is beyond counting
    std::size_t incomplete = 0;    ///< a test is missing in a paired comparison
    std::size_t positive = 0;      ///< of the rows used
    std::size_t negative = 0;
    double weightedPositive = 0.0;
    double weightedNegative = 0.0;
    std::size_t roundedWeights = 0; ///< rows with a weight that is not a whole number
    struct Gap {
        std::string test;
        std::size_t positive = 0;
        std::size_t negative = 0;
        [[nodiscard]] std::size_t rows() const noexcept { return positive + negative; }
    };
    std::vector<Gap> gaps; ///< per test that has one: rows that lack only its value

    [[nodiscard]] std::size_t used() const noexcept { return positive + negative; }
    /// (reason, rows) for each reason that left out a row.
    [[nodiscard]] std::vector<std::pair<std::string, std::size_t>> leftOut() const;
};

/// The data of one analysis as its host keeps them.
///
/// States are 1 (positive) and 0. Words become codes with value labels. Rows in which state, group or weight is
/// missing are not in the columns; a missing test value is NaN, for the component to leave out.
struct HostData {
    VexXML_920::VexVarList variables;
    std::vector<std::vector<double>> columns; ///< one per variable, parallel rows

    // Positions of variables; -1 for none.
    int state = -1;
    int group = -1;
    int weight = -1;
    std::vector<int> tests; ///< as named, repeats included; the state's position for a test that is the state
    RowCounts rows;
};

/// The codes of the two groups where the split is by select, or by two values that are not 0 and 1.
constexpr double firstGroupCode = 0.0;
constexpr double secondGroupCode = 1.0;

/// The columns to read for these roles, the tests included.
std::vector<ColumnRequest> requestsFor(const Roles& roles);

/// Takes the columns of the roles out of the table. Settles a group split by values: `roles.group` then says select,
/// with the two values in ascending order, unless the column holds nothing but 0 and 1.
/// Throws an input error when a value that the roles name never occurs or the column does not hold two values.
HostData makeHostData(DataTable table, Roles& roles);

} // namespace vexroc
