#pragma once

#include "space/ROCSpace.h"

#include <optional>
#include <utility>
#include <vector>

namespace ROCALG_920 {

/// What the rooms above read of a space beyond its interface: its observations, walks over their distinct values, and
/// the lists of the curve, handed over. The space must outlive the object.
class SpaceSummary {
public:
    explicit SpaceSummary(ROCSpace& space) : space_(space) {}

    /// Closes the space, as every summary read does.
    void finish() { space_.finishUpdate(); }
    /// In arrival order, whatever order getROCData() shows.
    [[nodiscard]] const Observations& observations() const noexcept { return space_.observations_; }
    [[nodiscard]] const StateCounts& counts() const noexcept { return observations().counts(); }
    /// Calls work(walk) with a walk before the first distinct value and returns what it returns.
    template <class Work>
    decltype(auto) withWalk(Work&& work) const
    {
        return space_.withWalk(std::forward<Work>(work));
    }
    /// The order of independentSortMethod holds for getROCData() from here on.
    void orderByState() { space_.setOrder(ROCSpace::Order::ByState); }
    /// Hands over all lists of the curve at once; a later read makes them anew.
    [[nodiscard]] CurveLists takeCurve() { return space_.takeCurve(); }
    /// Hands over the counts behind sensitivities and specificities, parallel to them; once per making of the lists.
    [[nodiscard]] std::vector<ClassifiedPositive> takeCounts() { return std::exchange(space_.counts_, {}); }

    /// Statistics that ordered the observations leave what they found for the record; without both states nothing.
    void keepTriples(const OrderedTriples& triples) { space_.triples_ = triples; }
    [[nodiscard]] const std::optional<OrderedTriples>& triples() const noexcept { return space_.triples_; }

private:
    ROCSpace& space_;
};

} // namespace ROCALG_920
