#include "cli/study/CaseColumns.h"

namespace vexroc {

CaseColumns::CaseColumns(const DataTable& table, const CaseLabels& labels, const Question& question)
    : table_(table), state_(labels.state().codesOf(table.column(question.state.column, ColumnKind::labels),
                                                   positiveState, negativeState, otherState)),
      groupWords_(labels.groupWords())
{
    if (labels.group()) {
        codes_ = labels.group()->codesOf(table.column(question.grouping->column, ColumnKind::labels), firstGroup,
                                         secondGroup, otherGroup);
        group_ = codes_;
    } else if (question.grouping) {
        group_ = table.numbers(question.grouping->column);
    }
    if (!question.weight.empty())
        weight_ = table.numbers(question.weight);
    if (!question.count.empty())
        count_ = table.numbers(question.count);
}

} // namespace vexroc
