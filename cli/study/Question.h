#pragma once

#include "cli/study/ColumnLabels.h"
#include "cli/study/DataTable.h"
#include "cli/words/CallLine.h"

#include <optional>
#include <string>
#include <vector>

namespace vexroc {

/// How a column splits the cases in two groups.
struct Grouping {
    enum class By {
        twoValues, ///< the two values that the column holds
        selected,  ///< two values of several
        cut,       ///< below a value, and from it on
        midPoint,  ///< below the middle of its range, and from it on
    };
    std::string column;
    By by = By::twoValues;
    std::vector<std::string> selected = {}; ///< two for By::selected
    double cut = 0.0;                       ///< for By::cut

    [[nodiscard]] bool isOfWords() const noexcept { return by == By::twoValues || by == By::selected; }
};

/// The state column, and which of its values are positive and negative.
struct StateQuestion {
    std::string column;
    StateChoice choice;
    /// What "grade>=3" may mean as well: a column grade, cut at 3. It holds where there is no column `column`.
    struct Cut {
        std::string column;
        std::string sign;
        std::string bound;
    };
    std::optional<Cut> otherwise = {};
};

enum class Comparison {
    none,
    paired,      ///< tests with each other, on the same cases
    independent, ///< each test between the groups
};

/// Who takes part.
enum class CaseRule {
    together, ///< one analysis: each test on the cases in which it is known, in a paired comparison in which all are
    eachTest, ///< every test as if it were the only one
    pairwise, ///< every two tests on the cases in which both are known
};

/// What is asked of a table, whichever command asks it.
struct Question {
    std::string input;          ///< where the data are, as the user calls it
    CallLine call = CallLine(); ///< how it is asked, for messages
    StateQuestion state;
    std::vector<std::string> tests; ///< as named, repeats included
    std::optional<Grouping> grouping;
    std::string weight; ///< column; empty for none
    std::string by;     ///< column with a value for each analysis; empty for one analysis
    CaseRule rule = CaseRule::eachTest;
    Comparison comparison = Comparison::none;
    bool largerIsPositive = true;
    bool equalIsPositive = true;      ///< a value equal to a cut-off
    bool biNegative = false;          ///< standard errors of bi-negative exponential distributions
    bool alongFalsePositives = false; ///< how precision-recall points are interpolated
    double level = 0.95;              ///< of the intervals
    bool byArea = false;              ///< the tests of the answer: largest area first, then those without one
    // What is needed beside the areas.
    bool rocCurve = false; ///< and with it the Kolmogorov-Smirnov maximum
    bool precisionRecall = false;
    bool points = false; ///< of the curves, not only what is told of them
    bool bestCutOffs = false;

    /// The columns to read, of the tests those that are named.
    [[nodiscard]] std::vector<ColumnRequest> columns() const;
    /// Settles what the state is, once the columns are read.
    void settleState(const DataTable& table);
    /// "larger" or "smaller": which test values are more positive.
    [[nodiscard]] const char* positiveEnd() const noexcept { return largerIsPositive ? "larger" : "smaller"; }
};

} // namespace vexroc
