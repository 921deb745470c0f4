#include "cli/study/CaseLabels.h"

#include "cli/study/require.h"
#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/VisibleText.h"
#include "vexrocproc/analysis.h"

#include <algorithm>
#include <utility>

namespace vexroc {

namespace {

ColumnLabels stateLabels(const DataTable& table, const Question& question)
{
    std::vector<std::string> named = question.state.choice.positive;
    named.insert(named.end(), question.state.choice.negative.begin(), question.state.choice.negative.end());
    ColumnLabels labels(table, question.state.column, named);
    labels.choose(question.state.choice, question.call);
    return labels;
}

/// "'A' (3), 'B' (2)".
std::string withCounts(const std::vector<ColumnLabels::Value>& values)
{
    constexpr std::size_t most = 8;
    std::string list;
    for (std::size_t v = 0; v < std::min(most, values.size()); ++v)
        list += (list.empty() ? "" : ", ") + inQuotes(values[v].text) + " (" + std::to_string(values[v].rows) + ')';
    return list + (values.size() > most ? " and " + std::to_string(values.size() - most) + " more" : "");
}

/// "'NA': 3, '.': 2", the commonest first.
std::string missingWordsOf(const DataColumn& column)
{
    constexpr std::size_t most = 20;
    std::vector<std::pair<long long, std::string>> words;
    for (const auto& [word, rows] : column.missingCells)
        words.emplace_back(-rows, word);
    std::ranges::sort(words);
    std::string list;
    for (std::size_t w = 0; w < std::min(most, words.size()); ++w)
        list += (list.empty() ? "" : ", ") + inQuotes(words[w].second) + ": " + std::to_string(-words[w].first);
    return list;
}

} // namespace

CaseLabels::CaseLabels(const DataTable& table, const Question& question) : state_(stateLabels(table, question))
{
    const bool hasWords = question.grouping && question.grouping->isOfWords();
    if (hasWords)
        addGroup(table, *question.grouping);
    if (!question.by.empty())
        by_.emplace(table, question.by);
    for (const DataColumn& column : table.columns) {
        if (!column.missingCells.empty())
            cellsToName_.push_back({"missing-words", column.request.name, missingWordsOf(column)});
        if (!column.doubtful.empty())
            cellsToName_.push_back({"thousands", column.request.name, inQuotes(column.doubtful)});
    }
}

void CaseLabels::addGroup(const DataTable& table, const Grouping& grouping)
{
    group_.emplace(table, grouping.column, grouping.selected);
    groupWords_ = grouping.selected;
    if (grouping.by == Grouping::By::twoValues) {
        for (const ColumnLabels::Value& value : group_->values())
            groupWords_.push_back(value.text);
        if (groupWords_.size() != 2)
            throw inputError(table.source + ": the group column " + inQuotes(grouping.column) + " holds "
                             + (groupWords_.empty() ? "missing cells only" : withCounts(group_->values()))
                             + "; it needs two values: pick them with --select, or split numbers with --cut or "
                               "--mid-point");
    }
    if (const int first = group_->find(groupWords_[0]); first >= 0 && first == group_->find(groupWords_[1]))
        throw inputError(group_->place() + ": " + listed(groupWords_, 2) + " are one value; name two different ones");
    group_->choose({.positive = {groupWords_[0]}, .negative = {groupWords_[1]}}, CallLine());
}

void CaseLabels::addRemarks(vexroc_remarks* remarks) const
{
    state_.addRemarks(remarks);
    for (const std::optional<ColumnLabels>* const labels : {&group_, &by_})
        if (*labels)
            (*labels)->addRemarks(remarks);
    for (const auto& [code, column, cells] : cellsToName_)
        require(vexroc_remarks_add(remarks, code, column.c_str(), cells.c_str()));
}

} // namespace vexroc
