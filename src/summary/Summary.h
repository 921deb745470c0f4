#pragma once

#include "summary/SortedValues.h"
#include "summary/ValueWalk.h"

#include <cstddef>
#include <span>
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
        if (columns.size() == 0)
            return;
        const valuesort::SortedValues sorted(columns);
        values_.reserve(
            sorted.countDistinct(columns)); // growing would copy every value, into memory to be cleared first
        sorted.withWalk(columns, [this](auto walk) { forEachValue(walk, [this](const DistinctValue& x) { add(x); }); });
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
    /// Both samples as one.
    [[nodiscard]] Summary mergedWith(const Summary& other) const
    {
        Summary both;
        both.values_.reserve(values_.size() + other.values_.size());
        auto next = other.values_.begin();
        for (const DistinctValue& x : values_) {
            for (; next != other.values_.end() && next->value < x.value; ++next)
                both.add(*next);
            both.add(x);
            if (next != other.values_.end() && next->value == x.value)
                both.addToLast(*next++);
        }
        for (; next != other.values_.end(); ++next)
            both.add(*next);
        return both;
    }
    /// The cases of the first so many distinct values.
    [[nodiscard]] StateCounts before(std::size_t place) const noexcept
    {
        if (place == values_.size())
            return counts_;
        StateCounts counts = marks_[place / markDistance];
        for (std::size_t i = place - place % markDistance; i < place; ++i)
            counts.add(values_[i]);
        return counts;
    }

private:
    static constexpr std::size_t markDistance = 64;

    void add(const DistinctValue& x)
    {
        if (values_.size() % markDistance == 0)
            marks_.push_back(counts_);
        values_.push_back(x);
        values_.back().value += 0.0; // -0.0 is 0.0, whichever came first
        counts_.add(x);
    }
    /// More cases of the same value.
    void addToLast(const DistinctValue& x)
    {
        values_.back().positives += x.positives;
        values_.back().negatives += x.negatives;
        counts_.add(x);
    }

    std::vector<DistinctValue> values_;
    std::vector<StateCounts> marks_; ///< the cases before every 64th value, so that none is far from one
    StateCounts counts_;
};

} // namespace ROCALG_920
