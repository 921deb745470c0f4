#pragma once

#include <concepts>
#include <cstdint>
#include <vector>

namespace ROCALG_920 {

/// One distinct test value with the number of its observations in each state.
struct DistinctValue {
    double value = 0.0;
    std::int64_t positives = 0;
    std::int64_t negatives = 0;
};

/// The distinct values of a sample, ascending: next() moves on to the next one, and is false after the last. A copy
/// goes on by itself. Sums and curves are made from walks alone, so that a sort, a kept list or lists in the middle of
/// being merged serve alike.
template <class T>
concept ValueWalk = std::copyable<T> && requires(T walk, DistinctValue& x)
{
    {
        walk.next(x)
        } -> std::same_as<bool>;
};

/// Over a list of distinct values, which outlives the walk.
class ListWalk {
public:
    explicit ListWalk(const std::vector<DistinctValue>& list) : next_(list.data()), end_(next_ + list.size()) {}
    [[nodiscard]] bool next(DistinctValue& x) noexcept
    {
        if (next_ == end_)
            return false;
        x = *next_++;
        return true;
    }

private:
    const DistinctValue* next_;
    const DistinctValue* end_;
};

/// Calls visit(DistinctValue) for every value to come.
template <ValueWalk Walk, class Visit>
void forEachValue(Walk walk, Visit&& visit)
{
    DistinctValue x;
    while (walk.next(x))
        visit(x);
}

/// Counts of observations in each state.
struct StateCounts {
    std::int64_t positives = 0;
    std::int64_t negatives = 0;

    [[nodiscard]] std::int64_t cases() const noexcept { return positives + negatives; }
    [[nodiscard]] bool bothStates() const noexcept { return positives > 0 && negatives > 0; }
    void add(const DistinctValue& x) noexcept
    {
        positives += x.positives;
        negatives += x.negatives;
    }
};

/// The counts of all values to come.
template <ValueWalk Walk>
[[nodiscard]] StateCounts countsOf(const Walk& walk)
{
    StateCounts counts;
    forEachValue(walk, [&](const DistinctValue& x) { counts.add(x); });
    return counts;
}

} // namespace ROCALG_920
