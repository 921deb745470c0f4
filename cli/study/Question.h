#pragma once

#include "cli/study/ColumnLabels.h"
#include "cli/study/DataTable.h"
#include "cli/words/CallLine.h"

#include <map>
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

/// How areas and differences are inferred, in the words of analysis.h. They are settled: none says "recommended", so
/// that headings can name them.
struct Inference {
    double level = 0.95;
    std::string interval = "score";
    std::string pMethod = "mann-whitney"; ///< or "wald"
    std::string exact = "auto";
    std::string alternative = "two-sided";
    double nullArea = 0.5;
    long long replicates = 1999;
    unsigned long long seed = 1;
    bool biNegative = false; ///< standard errors of bi-negative exponential distributions, beside wald

    [[nodiscard]] bool isBootstrap() const { return interval == "bootstrap" || interval == "bca"; }
};

/// A test as it is typed, such as "neg:smaller", and what it means where there is no column of the whole name.
struct DirectedTest {
    std::string typed;
    std::string column;
    bool largerIsPositive;
};

/// What is asked of a table, whichever command asks it.
struct Question {
    std::string input;          ///< where the data are, as the user calls it
    CallLine call = CallLine(); ///< how it is asked, for messages
    StateQuestion state;
    std::vector<std::string> tests;            ///< as named, repeats included
    std::vector<DirectedTest> directed = {};   ///< those of `tests` that may be a column with its direction
    std::map<std::string, bool> largerOf = {}; ///< of the tests that have a direction of their own: is larger positive?
    std::optional<Grouping> grouping;
    std::string weight;   ///< column; empty for none
    std::string count;    ///< likewise: the number of cases that a row stands for
    std::string by;       ///< column with a value for each analysis; empty for one analysis
    bool eachTest = true; ///< every test as if it were the only one, or one analysis of all
    Comparison comparison = Comparison::none;
    bool completeCases = false;        ///< a paired comparison is of the rows in which all tests are known
    std::string weightKind = "unsaid"; ///< or "counts", "probability"
    Inference inference = {};
    bool largerIsPositive = true;
    bool equalIsPositive = true;      ///< a value equal to a cut-off
    bool alongFalsePositives = false; ///< how precision-recall points are interpolated
    bool byArea = false;              ///< the tests of the answer: largest area first, then those without one
    // What is needed beside the areas.
    bool rocCurve = false; ///< and with it the Kolmogorov-Smirnov maximum
    bool precisionRecall = false;
    bool points = false; ///< of the curves, not only what is told of them
    bool bestCutOffs = false;
    bool summaries = false; ///< of the cases of each test, for what else is asked of them

    /// The columns to read, of the tests those that are named.
    [[nodiscard]] std::vector<ColumnRequest> columns() const;
    /// Settles what the state and the tests are, once the columns are read. Throws a usage error where a test is named
    /// with two directions.
    void settle(const DataTable& table);
    [[nodiscard]] bool hasProbabilityWeights() const { return weightKind == "probability"; }
    // Whose standard errors areas and differences have, in the words of analysis.h.
    [[nodiscard]] const char* errorOfAreas() const;
    [[nodiscard]] const char* errorOfDifferences() const;
    [[nodiscard]] bool isLargerPositive(const std::string& test) const;
    /// "larger" or "smaller": which test values are more positive.
    [[nodiscard]] const char* positiveEnd() const noexcept { return largerIsPositive ? "larger" : "smaller"; }

private:
    void settleState(const DataTable& table);
    void settleTests(const DataTable& table);
};

} // namespace vexroc
