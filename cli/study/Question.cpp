#include "cli/study/Question.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <set>

namespace vexroc {

std::vector<ColumnRequest> Question::columns() const
{
    std::vector<ColumnRequest> requests{
        {state.column, ColumnKind::labels, state.otherwise ? state.otherwise->column : ""}};
    if (grouping)
        requests.push_back({grouping->column, grouping->isOfWords() ? ColumnKind::labels : ColumnKind::numbers});
    if (!weight.empty())
        requests.push_back({weight, ColumnKind::numbers});
    if (!count.empty())
        requests.push_back({count, ColumnKind::numbers});
    for (const std::string& test : tests) {
        const auto found = std::ranges::find(directed, test, &DirectedTest::typed);
        requests.push_back({test, ColumnKind::numbers, found == directed.end() ? "" : found->column});
    }
    if (!by.empty())
        requests.push_back({by, ColumnKind::labels});
    return requests;
}

void Question::settle(const DataTable& table)
{
    settleState(table);
    settleTests(table);
}

bool Question::isLargerPositive(const std::string& test) const
{
    const auto own = largerOf.find(test);
    return own != largerOf.end() ? own->second : largerIsPositive;
}

const char* Question::errorOfAreas() const
{
    return hasProbabilityWeights()     ? "weighted"
        : inference.interval != "wald" ? "delong"
        : inference.biNegative         ? "bi-negative"
                                       : "hanley-mcneil";
}

const char* Question::errorOfDifferences() const
{
    return comparison == Comparison::paired && !hasProbabilityWeights() ? "delong" : errorOfAreas();
}

void Question::settleTests(const DataTable& table)
{
    std::map<std::string, std::set<bool>> directions; // as named
    for (std::string& test : tests) {
        const auto own = std::ranges::find(directed, test, &DirectedTest::typed);
        if (own == directed.end() || table.holds(test, ColumnKind::numbers)) {
            directions[test].insert(largerIsPositive);
            continue;
        }
        test = own->column;
        largerOf[test] = own->largerIsPositive;
        directions[test].insert(own->largerIsPositive);
    }
    directed.clear();
    for (const auto& [test, named] : directions)
        if (named.size() > 1)
            throw usageError("--test names " + inQuotes(test) + " with two directions; give one of them");
}

void Question::settleState(const DataTable& table)
{
    if (state.otherwise && !table.holds(state.column, ColumnKind::labels)) {
        state.column = state.otherwise->column;
        state.choice.positive.clear(); // what is said of negative values stays, and does not go with a cut
        state.choice.sign = state.otherwise->sign;
        state.choice.bound = state.otherwise->bound;
    }
    state.otherwise.reset();
}

} // namespace vexroc
