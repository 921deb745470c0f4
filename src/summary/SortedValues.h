#pragma once

#include "summary/ValueSort.h"
#include "summary/ValueWalk.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

/// Observations in ascending order of test value, as walks over the distinct values.
///
/// All take columns with size(), value(i) and positive(i), without NaN. Input that is ascending already, or holds few
/// distinct values, is noticed early and needs one pass and next to no memory; all else costs one sort and 8 bytes a
/// case (16 where cases are ranked).
namespace ROCALG_920::valuesort {

template <class Columns>
[[nodiscard]] bool isAscending(const Columns& columns) noexcept
{
    Key previous = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Key key = orderedKey(columns.value(i));
        if (key < previous)
            return false;
        previous = key;
    }
    return true;
}

/// Counts per distinct value, while there are few: a small hash table that gives up when it fills.
class FewValues {
public:
    /// Nothing when the columns hold too many distinct values for this to pay.
    template <class Columns>
    [[nodiscard]] static std::optional<FewValues> count(const Columns& columns)
    {
        const std::size_t limit = std::min<std::size_t>(512, columns.size() / 8);
        if (limit == 0 || columns.size() > std::numeric_limits<std::uint32_t>::max())
            return std::nullopt;
        FewValues few(std::bit_ceil(4 * limit));
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const Key key = orderedKey(columns.value(i));
            Slot& slot = few.slots_[few.find(key)];
            if (isFree(slot)) {
                if (++few.used_ > limit)
                    return std::nullopt;
                slot.key = key;
            }
            const bool positive = columns.positive(i);
            slot.positives += positive;
            slot.negatives += !positive;
        }
        return few;
    }

    /// Numbers of the used slots in ascending order of their values.
    [[nodiscard]] std::vector<std::uint16_t> ascending() const
    {
        std::vector<std::uint16_t> used;
        used.reserve(used_);
        for (std::size_t slot = 0; slot < slots(); ++slot)
            if (!isFree(slots_[slot]))
                used.push_back(static_cast<std::uint16_t>(slot));
        std::ranges::sort(used, {}, [this](std::uint16_t slot) { return slots_[slot].key; });
        return used;
    }
    [[nodiscard]] DistinctValue at(std::size_t slot) const noexcept
    {
        return {valueOfKey(slots_[slot].key), slots_[slot].positives, slots_[slot].negatives};
    }
    /// The slot of a key, or the free one where it belongs.
    [[nodiscard]] std::size_t find(Key key) const noexcept
    {
        constexpr Key spread = 0x9E3779B97F4A7C15u; // 2^64 over the golden ratio
        std::size_t slot = static_cast<std::size_t>((key * spread) >> hashShift_);
        while (slots_[slot].key != key && !isFree(slots_[slot]))
            slot = (slot + 1) & (slots() - 1);
        return slot;
    }
    /// Number of slots, used or not: a power of two.
    [[nodiscard]] std::size_t slots() const noexcept { return slots_.size(); }

private:
    struct Slot {
        Key key = 0;
        std::uint32_t positives = 0; // 16 bytes in all: the table stays in the nearest cache
        std::uint32_t negatives = 0;
    };

    explicit FewValues(std::size_t slots) : slots_(slots), hashShift_(64 - std::countr_zero(slots)) {}
    [[nodiscard]] static bool isFree(const Slot& slot) noexcept { return (slot.positives | slot.negatives) == 0; }

    std::vector<Slot> slots_;
    int hashShift_;
    std::size_t used_ = 0;
};

/// Over columns that are in ascending order.
template <class Columns>
class ColumnsWalk {
public:
    explicit ColumnsWalk(const Columns& columns) : columns_(columns), key_(keyAt(0)) {}
    [[nodiscard]] bool next(DistinctValue& x) noexcept
    {
        const std::size_t begin = next_;
        if (begin == columns_.size())
            return false;
        const Key key = key_;
        std::int64_t positives = 0;
        do
            positives += columns_.positive(next_);
        while ((key_ = keyAt(++next_)) == key && next_ < columns_.size());
        x = {valueOfKey(key), positives, static_cast<std::int64_t>(next_ - begin) - positives};
        return true;
    }
    /// Position of the first case after the current value.
    [[nodiscard]] std::size_t position() const noexcept { return next_; }

private:
    [[nodiscard]] Key keyAt(std::size_t i) const noexcept
    {
        return i < columns_.size() ? orderedKey(columns_.value(i)) : 0;
    }

    Columns columns_;
    std::size_t next_ = 0;
    Key key_; ///< of the case at next_
};

/// Over sorted words: those of negative values first, then the others.
class WordsWalk {
public:
    explicit WordsWalk(const Sorted<StateWord>& sorted)
        : next_(sorted.elements.data()), half_(next_ + sorted.firstUpper), end_(next_ + sorted.elements.size())
    {
    }
    [[nodiscard]] bool next(DistinctValue& x) noexcept
    {
        if (next_ == half_ && !enterUpperHalf())
            return false;
        const StateWord* const begin = next_;
        const Key key = begin->word >> 1;
        std::int64_t positives = 0;
        do
            positives += next_->positive();
        while (++next_ != half_ && next_->word >> 1 == key);
        x = {valueOfKey(key | highestBit_), positives, static_cast<std::int64_t>(next_ - begin) - positives};
        return true;
    }

private:
    [[nodiscard]] bool enterUpperHalf() noexcept
    {
        highestBit_ = signBit;
        half_ = end_;
        return next_ != end_;
    }

    const StateWord* next_;
    const StateWord* half_; ///< end of the words that share the highest bit of their keys
    const StateWord* end_;
    Key highestBit_ = 0;
};

/// The order of one variable's observations, kept so that its distinct values can be walked over again and again.
class SortedValues {
public:
    /// Throws std::bad_alloc only.
    template <class Columns>
    explicit SortedValues(const Columns& columns)
    {
        if (isAscending(columns)) {
            order_ = Order::AsTheyStand;
        } else if (const std::optional<FewValues> few = FewValues::count(columns)) {
            order_ = Order::Listed;
            for (const std::uint16_t slot : few->ascending())
                list_.push_back(few->at(slot));
        } else {
            order_ = Order::Words;
            sorted_ = sortAll<StateWord>(columns);
        }
    }

    /// Calls work(walk) with a walk before the first distinct value and returns what it returns. The columns are
    /// those that the order was made from.
    template <class Columns, class Work>
    decltype(auto) withWalk(const Columns& columns, Work&& work) const
    {
        switch (order_) {
        case Order::AsTheyStand: return work(ColumnsWalk<Columns>(columns));
        case Order::Listed: return work(ListWalk(list_));
        case Order::Words: break;
        }
        return work(WordsWalk(sorted_));
    }

    /// Number of distinct values; there is at least one. Without a branch, for a fraction of what a walk takes.
    template <class Columns>
    [[nodiscard]] std::size_t countDistinct(const Columns& columns) const noexcept
    {
        std::size_t steps = 0;
        switch (order_) {
        case Order::AsTheyStand:
            for (std::size_t i = 1; i < columns.size(); ++i)
                steps += columns.value(i - 1) != columns.value(i); // exact; both zeros are one value
            return steps + 1;
        case Order::Listed: return list_.size();
        case Order::Words: break;
        }
        return sorted_.countSteps() + 1;
    }
    /// Smallest and largest value; there is at least one.
    template <class Columns>
    [[nodiscard]] std::pair<double, double> range(const Columns& columns) const noexcept
    {
        switch (order_) {
        case Order::AsTheyStand: return {columns.value(0), columns.value(columns.size() - 1)};
        case Order::Listed: return {list_.front().value, list_.back().value};
        case Order::Words: break;
        }
        return {sorted_.valueAt(0), sorted_.valueAt(sorted_.elements.size() - 1)};
    }

private:
    enum class Order { AsTheyStand, Listed, Words };

    Order order_;
    std::vector<DistinctValue> list_;
    Sorted<StateWord> sorted_;
};

/// Calls visit(DistinctValue) for every distinct test value, ascending. Throws std::bad_alloc only.
template <class Columns, class Visit>
void forEachDistinctValue(const Columns& columns, Visit&& visit)
{
    SortedValues(columns).withWalk(columns, [&](auto walk) { forEachValue(walk, visit); });
}

/// Calls answer = onValue(DistinctValue) for every distinct test value, ascending, and after that
/// onCase(i, positive, answer) for every case i that has the value. Returns onValue as the last value left it: what it
/// keeps stays in registers, where the scattered stores of onCase do not hold it up. Throws std::bad_alloc only.
template <class Columns, class OnValue, class OnCase>
OnValue rankCases(const Columns& columns, OnValue onValue, OnCase onCase)
{
    const std::size_t count = columns.size();
    DistinctValue x;
    if (isAscending(columns)) {
        ColumnsWalk<Columns> walk(columns);
        for (std::size_t i = 0; walk.next(x);) {
            const auto answer = onValue(x);
            for (; i < walk.position(); ++i)
                onCase(i, columns.positive(i), answer);
        }
    } else if (const std::optional<FewValues> few = FewValues::count(columns)) {
        std::vector<decltype(onValue(x))> answers(few->slots());
        for (const std::uint16_t slot : few->ascending())
            answers[slot] = onValue(few->at(slot));
        for (std::size_t i = 0; i < count; ++i)
            onCase(i, columns.positive(i), answers[few->find(orderedKey(columns.value(i)))]);
    } else {
        const Sorted<CaseKey> sorted = sortAll<CaseKey>(columns);
        const CaseKey* const cases = sorted.elements.data();
        for (std::size_t begin = 0, end = 0; begin < count; begin = end) {
            std::int64_t positives = 0;
            do
                positives += cases[end].positive();
            while (++end < count && cases[end].key == cases[begin].key);
            const auto answer = onValue(DistinctValue{valueOfKey(cases[begin].key), positives,
                                                      static_cast<std::int64_t>(end - begin) - positives});
            for (std::size_t i = begin; i < end; ++i)
                onCase(cases[i].index(), cases[i].positive(), answer);
        }
    }
    return onValue;
}

} // namespace ROCALG_920::valuesort
