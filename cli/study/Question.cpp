#include "cli/study/Question.h"

namespace vexroc {

std::vector<ColumnRequest> Question::columns() const
{
    std::vector<ColumnRequest> requests{{state.column, ColumnKind::labels}};
    if (grouping) {
        const bool isLabels = grouping->by == Grouping::By::twoValues || grouping->by == Grouping::By::selected;
        requests.push_back({grouping->column, isLabels ? ColumnKind::labels : ColumnKind::numbers});
    }
    if (!weight.empty())
        requests.push_back({weight, ColumnKind::numbers});
    for (const std::string& test : tests)
        requests.push_back({test, ColumnKind::numbers});
    if (!by.empty())
        requests.push_back({by, ColumnKind::labels});
    return requests;
}

} // namespace vexroc
