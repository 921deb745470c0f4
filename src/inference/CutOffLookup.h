#pragma once

#include "summary/CurveSweep.h"
#include "summary/Summary.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace ROCALG_920 {

/// The cut-offs of a curve by number, and what any cut-off makes of the cases: a search each, no sweep from the first.
class CutOffLookup {
public:
    /// The sample outlives this.
    CutOffLookup(const Summary& sample, CurveOptions options)
        : sample_(sample), values_(sample.values()), side_(sample.counts(), options),
          ends_(values_.empty() ? std::pair(0.0, 0.0) : endPoints(values_.front().value, values_.back().value))
    {
    }

    /// How many the curve has: one more than distinct values, none without.
    [[nodiscard]] std::size_t count() const noexcept { return values_.empty() ? 0 : values_.size() + 1; }
    /// The counts at any cut-off but NaN, infinite ones included.
    [[nodiscard]] CutOffCounts at(double cutOff) const { return beyond(placeOf(cutOff)); }
    /// The counts with so many distinct values left of the cut-off.
    [[nodiscard]] CutOffCounts beyond(std::size_t place) const { return side_.classify(sample_.before(place)); }
    /// How many distinct values are left of any cut-off but NaN.
    [[nodiscard]] std::size_t placeOf(double cutOff) const noexcept
    {
        const auto end = std::partition_point(values_.begin(), values_.end(),
                                              [&](const DistinctValue& x) { return side_.isLeft(x.value, cutOff); });
        return static_cast<std::size_t>(end - values_.begin());
    }
    /// Calls visit(cut-off, CutOffCounts, place of the cut-off) for those of the curve from number `first` on:
    /// forEachCutOff in pieces.
    template <class Visit>
    void forEach(std::size_t first, std::size_t count, Visit&& visit) const
    {
        std::size_t place = first > 0 && count > 0 ? leftAfter(first - 1) : 0;
        StateCounts left = sample_.before(place);
        const auto visitAt = [&](double cutOff) {
            for (; place < values_.size() && side_.isLeft(values_[place].value, cutOff); ++place)
                left.add(values_[place]);
            visit(cutOff, side_.classify(left), place);
        };
        for (std::size_t number = first; number < first + count; ++number)
            visitAt(cutOff(number));
    }

private:
    [[nodiscard]] double cutOff(std::size_t number) const noexcept
    {
        if (number == 0)
            return ends_.first;
        return number == values_.size() ? ends_.second : (values_[number - 1].value + values_[number].value) * 0.5;
    }
    /// How many distinct values are left of this one or of any before: where a midpoint overflows, they are no fewer.
    [[nodiscard]] std::size_t leftAfter(std::size_t number) const noexcept
    {
        return std::max(placeOf(ends_.first), placeOf(cutOff(number)));
    }

    const Summary& sample_;
    std::span<const DistinctValue> values_;
    SideOfCutOff side_;
    std::pair<double, double> ends_;
};

} // namespace ROCALG_920
