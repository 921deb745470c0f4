#include "cli/study/Question.h"

namespace vexroc {

std::vector<ColumnRequest> Question::columns() const
{
    std::vector<ColumnRequest> requests{
        {state.column, ColumnKind::labels, state.otherwise ? state.otherwise->column : ""}};
    if (grouping)
        requests.push_back({grouping->column, grouping->isOfWords() ? ColumnKind::labels : ColumnKind::numbers});
    if (!weight.empty())
        requests.push_back({weight, ColumnKind::numbers});
    for (const std::string& test : tests)
        requests.push_back({test, ColumnKind::numbers});
    if (!by.empty())
        requests.push_back({by, ColumnKind::labels});
    return requests;
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
