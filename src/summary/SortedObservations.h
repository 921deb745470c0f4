#pragma once

#include "summary/CurveSweep.h"
#include "summary/Observations.h"
#include "summary/SortedValues.h"

#include <cstddef>
#include <utility>

/// Observations with the order that was made of them: walks and curves, whatever the form of either.
namespace ROCALG_920 {

[[nodiscard]] inline valuesort::SortedValues sortedValues(const Observations& observations)
{
    return observations.visit([](const auto& columns) { return valuesort::SortedValues(columns); });
}

/// Calls work(walk) with a walk before the first distinct value and returns what it returns.
template <class Work>
decltype(auto) withWalk(const Observations& observations, const valuesort::SortedValues& sorted, Work&& work)
{
    return observations.visit([&](const auto& columns) { return sorted.withWalk(columns, work); });
}

/// The same by an order that serves this once.
template <class Work>
decltype(auto) withWalk(const Observations& observations, Work&& work)
{
    return withWalk(observations, sortedValues(observations), std::forward<Work>(work));
}

/// Number of cut-offs of a curve.
[[nodiscard]] inline std::size_t countCutOffs(const Observations& observations, const valuesort::SortedValues& sorted)
{
    return observations.visit([&](const auto& columns) { return sorted.countDistinct(columns) + 1; });
}

/// Calls visit(cut-off, CutOffCounts) for every cut-off in ascending order.
template <class Visit>
void forEachCutOff(const Observations& observations, const valuesort::SortedValues& sorted, CurveOptions options,
                   Visit&& visit)
{
    const auto [lowest, highest] = observations.visit([&](const auto& columns) { return sorted.range(columns); });
    const CurveTotals totals{lowest, highest, observations.counts()};
    withWalk(observations, sorted, [&](const auto& walk) { forEachCutOff(walk, totals, options, visit); });
}

} // namespace ROCALG_920
