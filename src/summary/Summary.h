#pragma once

#include "summary/SortedValues.h"
#include "summary/ValueWalk.h"

#include <span>
#include <utility>
#include <vector>

namespace ROCALG_920 {

/// All that the inference on one test variable asks of a sample: its distinct values, ascending, with the numbers of
/// cases in each state. 24 bytes a distinct value.
class Summary {
public:
    Summary() = default;
    /// Of columns as in summary/SortedValues.h. Throws std::bad_alloc only.
    template <class Columns>
    explicit Summary(const Columns& columns)
    {
        if (columns.size() > 0)
            valuesort::forEachDistinctValue(columns, [this](const DistinctValue& x) { add(x); });
    }
    /// Of distinct values in ascending order.
    explicit Summary(std::span<const DistinctValue> values)
    {
        for (const DistinctValue& x : values)
            add(x);
    }

    [[nodiscard]] std::span<const DistinctValue> values() const noexcept { return values_; }
    [[nodiscard]] const StateCounts& counts() const noexcept { return counts_; }
    [[nodiscard]] ListWalk walk() const { return ListWalk(values_); }
    /// The same sample with every value negated, for tests of which smaller values are more positive.
    [[nodiscard]] Summary negated() const
    {
        Summary mirror;
        mirror.values_.reserve(values_.size());
        for (auto x = values_.rbegin(); x != values_.rend(); ++x)
            mirror.add({0.0 - x->value, x->positives, x->negatives});
        return mirror;
    }
    /// The same sample seen from the other side: values negated and states exchanged.
    [[nodiscard]] Summary exchanged() const
    {
        Summary mirror = negated();
        for (DistinctValue& x : mirror.values_)
            std::swap(x.positives, x.negatives);
        std::swap(mirror.counts_.positives, mirror.counts_.negatives);
        return mirror;
    }

private:
    void add(const DistinctValue& x)
    {
        values_.push_back(x);
        counts_.add(x);
    }

    std::vector<DistinctValue> values_;
    StateCounts counts_;
};

} // namespace ROCALG_920
