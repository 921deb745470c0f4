#include "calls/TestPairs.h"

#include "calls/toldResults.h"
#include "inference/TestAndInterval.h"

namespace ROCALG_920::calls {

TestPairs::TestPairs(const AnalysisRequest& request, const std::vector<std::span<const double>>& columns,
                     const RowRule& rule)
    : request_(request), columns_(columns), zCritical_(criticalValue(request.options().getConfidienceLevel()))
{
    const std::size_t rows = columns[static_cast<std::size_t>(rule.state)].size();
    for (std::size_t row = 0; row < rows; ++row) {
        const RowPart part = rule.of(RowOf<std::vector<std::span<const double>>>{columns, row});
        if (!isUsable(part.fate))
            continue;
        rows_.push_back(row);
        states_.push_back(part.positive);
    }
    if (rows_.size() == rows)
        rows_.clear();
}

void TestPairs::order(int column)
{
    if (tests_.contains(column))
        return;
    const bool larger = request_.directionOf(column) == ROCConst_920::LargerMorePositive;
    const std::span<const double> values = columns_[static_cast<std::size_t>(column)];
    std::vector<double> counted;
    for (const std::size_t row : rows_)
        counted.push_back(values[row]);
    tests_.emplace(column,
                   RankedCases(states_.size() == values.size() ? values : std::span<const double>(counted), larger));
}

vexroc_comparison TestPairs::compare(std::size_t first, std::size_t second) const
{
    const auto test = [this](std::size_t i) -> const RankedCases& { return tests_.at(request_.tests()[i]); };
    const auto [placements1, placements2, difference] = compareRanked(states_, test(first), test(second));
    vexroc_comparison out{};
    out.first = static_cast<int>(first);
    out.second = static_cast<int>(second);
    out.positive = placements1.cases().positives;
    out.negative = placements1.cases().negatives;
    const auto areaOf = [](const PlacementSums& placements) {
        AreaTest area; // missing without both states
        if (placements.cases().bothStates())
            area = {.area = placements.pairs().area(true), .stdError = stdErrorOfVariance(placements.variance())};
        return area;
    };
    const AreaTest area1 = areaOf(placements1);
    const AreaTest area2 = areaOf(placements2);
    out.first_area = area1.area;
    out.first_std_error = area1.stdError;
    out.second_area = area2.area;
    out.second_std_error = area2.stdError;
    out.error = "delong";
    setDifference(difference.stdErrorDiff, zCritical_, request_.alternative(), out);
    return out;
}

} // namespace ROCALG_920::calls
