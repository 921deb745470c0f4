#pragma once

#include "space/DistinctValue.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// Orders observations by test value in linear time; nothing outside this header knows how.
///
/// Two entry points, both over columns with size(), value(i) and positive(i) and without NaN:
///  - forEachDistinctValue: the distinct test values, ascending, with their counts per state;
///  - rankCases: the same, and what the caller answered for each value is handed on to the cases that have it.
///
/// Method. Doubles become unsigned integers of the same order. Ascending input and input with few distinct values
/// are noticed early and need one pass. All else is scattered once into buckets by leading bits, the bucket
/// borders equalised by a sample; each bucket is then split again by the bits in which its own elements differ,
/// down to a handful that insertion orders. No input takes more than a few passes per eight bytes of key.
/// Extra memory: 8 bytes a case for forEachDistinctValue, 16 for rankCases, none where one pass does.
namespace ROCALG_920::valuesort {

using Key = std::uint64_t;

inline constexpr Key signBit = Key{1} << 63;

/// Order-preserving image of a double: a < b exactly when orderedKey(a) < orderedKey(b), and -0.0 and 0.0, which
/// are equal, share one key. Works on bits, so that a flush-to-zero mode of the host does not merge denormals.
[[nodiscard]] inline Key orderedKey(double value) noexcept
{
    Key bits = std::bit_cast<Key>(value);
    bits = bits == signBit ? 0 : bits;
    return bits ^ ((bits & signBit) != 0 ? ~Key{0} : signBit);
}

[[nodiscard]] inline double valueOfKey(Key key) noexcept
{
    return std::bit_cast<double>(key ^ ((key & signBit) != 0 ? signBit : ~Key{0}));
}

/// A key with the state in its lowest bit. The key's highest bit makes room for it: words are compared only among
/// keys that share that bit, and `WordRuns` knows where it changes.
struct StateWord {
    Key word;

    [[nodiscard]] Key order() const noexcept { return word; }
    [[nodiscard]] bool positive() const noexcept { return (word & 1) != 0; }
    [[nodiscard]] static StateWord of(Key key, bool positive, std::size_t) noexcept { return {key << 1 | Key{positive}}; }
};

/// A key with the position of its case.
struct CaseKey {
    Key key;
    std::uint32_t index;
    std::uint32_t state;

    [[nodiscard]] Key order() const noexcept { return key; }
    [[nodiscard]] bool positive() const noexcept { return state != 0; }
    [[nodiscard]] static CaseKey of(Key key, bool positive, std::size_t index) noexcept
    {
        return {key, static_cast<std::uint32_t>(index), positive};
    }
};

/// Memory that is written before it is read: nothing is cleared first.
template <class T>
class RawArray {
public:
    explicit RawArray(std::size_t size) : items_(std::make_unique_for_overwrite<T[]>(size)) {}
    [[nodiscard]] T* data() noexcept { return items_.get(); }

private:
    std::unique_ptr<T[]> items_;
};

template <class Element>
void insertionSort(Element* first, std::size_t count) noexcept
{
    for (std::size_t i = 1; i < count; ++i) {
        const Element moving = first[i];
        std::size_t hole = i;
        for (; hole > 0 && moving.order() < first[hole - 1].order(); --hole)
            first[hole] = first[hole - 1];
        first[hole] = moving;
    }
}

/// Number of low bits to drop so that the distance from low to high fits into 2^bits cells.
[[nodiscard]] inline int cellShift(Key low, Key high, int bits) noexcept
{
    int shift = std::max(0, static_cast<int>(std::bit_width(high - low)) - bits);
    while ((high >> shift) - (low >> shift) >= Key{1} << bits)
        ++shift;
    return shift;
}

/// Sorts elements whose orders share the leading bit range; scratch holds as many elements.
/// Splits by the bits in which the elements differ, so that every level of the recursion takes off at least four.
template <class Element>
void sortBucket(Element* first, std::size_t count, Element* scratch) noexcept
{
    constexpr std::size_t byInsertion = 20;
    constexpr int maxCellBits = 10;
    if (count <= byInsertion)
        return insertionSort(first, count);

    Key low = first[0].order();
    Key high = low;
    for (std::size_t i = 1; i < count; ++i) {
        low = std::min(low, first[i].order());
        high = std::max(high, first[i].order());
    }
    if (low == high)
        return;
    const int bits = std::clamp(static_cast<int>(std::bit_width(count)) - 1, 4, maxCellBits);
    const int shift = cellShift(low, high, bits);
    const Key base = low >> shift;
    const std::size_t cells = static_cast<std::size_t>((high >> shift) - base) + 1;

    std::array<std::uint32_t, (std::size_t{1} << maxCellBits) + 1> ends;
    std::fill_n(ends.begin(), cells + 1, 0u);
    for (std::size_t i = 0; i < count; ++i)
        ++ends[(first[i].order() >> shift) - base + 1];
    for (std::size_t cell = 1; cell < cells; ++cell)
        ends[cell] += ends[cell - 1];
    for (std::size_t i = 0; i < count; ++i) // turns each start into its end
        scratch[ends[(first[i].order() >> shift) - base]++] = first[i];
    std::copy_n(scratch, count, first);
    if (shift == 0)
        return;
    for (std::size_t cell = 0, begin = 0; cell < cells; begin = ends[cell++])
        sortBucket(first + begin, ends[cell] - begin, scratch);
}

/// Maps keys to buckets in ascending order. Cells of equal width, fine enough to tell binades apart, are halved
/// further or put together, as a sample of the keys says, so that buckets become about equally full.
class BucketMap {
public:
    template <class Columns>
    BucketMap(const Columns& columns, Key low, Key high)
        : shift_(cellShift(low, high, cellBits)), base_(low >> shift_)
    {
        const std::size_t cells = static_cast<std::size_t>((high >> shift_) - base_) + 1;
        std::array<std::uint32_t, std::size_t{1} << cellBits> sampled{};
        const std::size_t stride = std::max<std::size_t>(1, columns.size() / sampleSize);
        std::size_t samples = 0;
        for (std::size_t i = 0; i < columns.size(); i += stride, ++samples)
            ++sampled[cellOf(orderedKey(columns.value(i)))];
        // The highest bit of a key is not in a StateWord: no bucket holds keys of both kinds.
        const std::size_t firstUpperCell = low < signBit && high >= signBit ? cellOf(signBit) : 0;

        const std::size_t perBucket = std::max<std::size_t>(1, samples / wantedBuckets(columns.size()));
        std::size_t filled = 0; // samples in the bucket that is open
        std::uint32_t next = 0; // number of the bucket that is open
        for (std::size_t cell = 0; cell < cells; ++cell) {
            const int bits = std::clamp(static_cast<int>(std::bit_width(sampled[cell] / perBucket)), 0,
                                        std::min(maxSplitBits, shift_));
            if (cell > 0 && (bits > 0 || filled >= perBucket || cell == firstUpperCell)) {
                ++next;
                filled = 0;
            }
            if (cell == firstUpperCell)
                firstUpperBucket_ = next;
            entries_[cell] = {next, static_cast<std::uint16_t>(shift_ - bits), static_cast<std::uint16_t>((1u << bits) - 1)};
            filled += sampled[cell];
            if (bits > 0) {
                next += (1u << bits) - 1;
                filled = perBucket; // the next cell opens a bucket of its own
            }
        }
        buckets_ = next + 1;
        if (high < signBit)
            firstUpperBucket_ = buckets_;
    }

    [[nodiscard]] std::size_t operator()(Key key) const noexcept
    {
        const Entry entry = entries_[cellOf(key)];
        return entry.first + (static_cast<std::size_t>(key >> entry.shift) & entry.mask);
    }
    [[nodiscard]] std::size_t buckets() const noexcept { return buckets_; }
    /// The first bucket whose keys have the highest bit, that is, whose values are not negative.
    [[nodiscard]] std::size_t firstUpperBucket() const noexcept { return firstUpperBucket_; }

private:
    static constexpr int cellBits = 11;
    static constexpr int maxSplitBits = 10;
    static constexpr std::size_t sampleSize = 8192;

    struct Entry {
        std::uint32_t first;
        std::uint16_t shift;
        std::uint16_t mask;
    };

    [[nodiscard]] static std::size_t wantedBuckets(std::size_t cases) noexcept
    {
        return std::clamp<std::size_t>(cases / 256, 1, 2048);
    }
    [[nodiscard]] std::size_t cellOf(Key key) const noexcept { return static_cast<std::size_t>((key >> shift_) - base_); }

    int shift_;
    Key base_;
    std::array<Entry, std::size_t{1} << cellBits> entries_;
    std::size_t buckets_ = 0;
    std::size_t firstUpperBucket_ = 0;
};

/// All elements in ascending order; those before `firstUpper` have negative values.
template <class Element>
struct Sorted {
    RawArray<Element> elements;
    std::size_t firstUpper;
};

template <class Element, class Columns>
[[nodiscard]] Sorted<Element> sortAll(const Columns& columns)
{
    const std::size_t count = columns.size();
    Key low = ~Key{0};
    Key high = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Key key = orderedKey(columns.value(i));
        low = std::min(low, key);
        high = std::max(high, key);
    }
    const BucketMap bucketOf(columns, low, high);
    std::vector<std::uint32_t> ends(bucketOf.buckets() + 1);
    for (std::size_t i = 0; i < count; ++i)
        ++ends[bucketOf(orderedKey(columns.value(i))) + 1];
    const std::size_t largest = *std::ranges::max_element(ends);
    for (std::size_t bucket = 1; bucket < ends.size(); ++bucket)
        ends[bucket] += ends[bucket - 1];

    Sorted<Element> sorted{RawArray<Element>(count), ends[bucketOf.firstUpperBucket()]};
    Element* const elements = sorted.elements.data();
    for (std::size_t i = 0; i < count; ++i) { // turns each start into its end
        const Key key = orderedKey(columns.value(i));
        elements[ends[bucketOf(key)]++] = Element::of(key, columns.positive(i), i);
    }
    RawArray<Element> scratch(largest);
    for (std::size_t bucket = 0, begin = 0; bucket < bucketOf.buckets(); begin = ends[bucket++])
        sortBucket(elements + begin, ends[bucket] - begin, scratch.data());
    return sorted;
}

/// Counts per distinct value, while there are few: a small hash table that gives up when it fills.
class FewValues {
public:
    struct Slot {
        Key key = 0;
        int positives = 0;
        int negatives = 0;
    };

    /// Nothing when the columns hold too many distinct values for this to pay.
    template <class Columns>
    [[nodiscard]] static std::optional<FewValues> count(const Columns& columns)
    {
        const std::size_t limit = std::min(maxValues, columns.size() / 8);
        if (limit == 0)
            return std::nullopt;
        FewValues few;
        std::size_t distinct = 0;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const Key key = orderedKey(columns.value(i));
            Slot& slot = few.slots_[few.find(key)];
            if (isFree(slot)) {
                if (++distinct > limit)
                    return std::nullopt;
                slot.key = key;
            }
            ++(columns.positive(i) ? slot.positives : slot.negatives);
        }
        few.sortUsed(distinct);
        return few;
    }

    /// Slot numbers in ascending order of their values.
    [[nodiscard]] const std::vector<std::uint16_t>& ascending() const noexcept { return ascending_; }
    [[nodiscard]] const Slot& operator[](std::size_t slot) const noexcept { return slots_[slot]; }
    /// The slot of a key, or the free one where it belongs.
    [[nodiscard]] std::size_t find(Key key) const noexcept
    {
        std::size_t slot = static_cast<std::size_t>((key * 0x9E3779B97F4A7C15u) >> (64 - slotBits));
        while (slots_[slot].key != key && !isFree(slots_[slot]))
            slot = (slot + 1) % slotCount;
        return slot;
    }
    static constexpr int slotBits = 11;
    static constexpr std::size_t slotCount = std::size_t{1} << slotBits;

private:
    static constexpr std::size_t maxValues = slotCount / 4;

    FewValues() : slots_(slotCount) {}
    [[nodiscard]] static bool isFree(const Slot& slot) noexcept { return slot.positives == 0 && slot.negatives == 0; }
    void sortUsed(std::size_t distinct)
    {
        ascending_.reserve(distinct);
        for (std::size_t slot = 0; slot < slotCount; ++slot)
            if (!isFree(slots_[slot]))
                ascending_.push_back(static_cast<std::uint16_t>(slot));
        std::ranges::sort(ascending_, {}, [this](std::uint16_t slot) { return slots_[slot].key; });
    }

    std::vector<Slot> slots_;
    std::vector<std::uint16_t> ascending_;
};

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

/// Walks elements that are in ascending order: calls run(begin, end, distinct value) for every run of equal ones.
/// keyAt(i) and positiveAt(i) read element i.
template <class KeyAt, class PositiveAt, class Run>
void forEachRun(std::size_t begin, std::size_t end, KeyAt keyAt, PositiveAt positiveAt, Run run)
{
    while (begin < end) {
        const Key key = keyAt(begin);
        int positives = 0;
        std::size_t next = begin;
        do
            positives += positiveAt(next);
        while (++next < end && keyAt(next) == key);
        run(begin, next, DistinctValue{valueOfKey(key), positives, static_cast<int>(next - begin) - positives});
        begin = next;
    }
}

/// Calls visit(DistinctValue) for every distinct test value, ascending. Throws std::bad_alloc only.
template <class Columns, class Visit>
void forEachDistinctValue(const Columns& columns, Visit&& visit)
{
    const auto visitRun = [&](std::size_t, std::size_t, const DistinctValue& distinct) { visit(distinct); };
    if (isAscending(columns)) {
        forEachRun(
            0, columns.size(), [&](std::size_t i) { return orderedKey(columns.value(i)); },
            [&](std::size_t i) { return columns.positive(i); }, visitRun);
    } else if (const std::optional<FewValues> few = FewValues::count(columns)) {
        for (const std::uint16_t slot : few->ascending())
            visit(DistinctValue{valueOfKey((*few)[slot].key), (*few)[slot].positives, (*few)[slot].negatives});
    } else {
        Sorted<StateWord> sorted = sortAll<StateWord>(columns);
        const StateWord* const words = sorted.elements.data();
        const auto positiveAt = [&](std::size_t i) { return words[i].positive(); };
        forEachRun(0, sorted.firstUpper, [&](std::size_t i) { return words[i].word >> 1; }, positiveAt, visitRun);
        forEachRun(sorted.firstUpper, columns.size(), [&](std::size_t i) { return words[i].word >> 1 | signBit; },
                   positiveAt, visitRun);
    }
}

/// Calls answer = onValue(DistinctValue) for every distinct test value, ascending, and after that
/// onCase(i, positive, answer) for every case i that has the value. Throws std::bad_alloc only.
template <class Columns, class OnValue, class OnCase>
void rankCases(const Columns& columns, OnValue&& onValue, OnCase&& onCase)
{
    if (isAscending(columns)) {
        forEachRun(
            0, columns.size(), [&](std::size_t i) { return orderedKey(columns.value(i)); },
            [&](std::size_t i) { return columns.positive(i); },
            [&](std::size_t begin, std::size_t end, const DistinctValue& distinct) {
                const auto answer = onValue(distinct);
                for (std::size_t i = begin; i < end; ++i)
                    onCase(i, columns.positive(i), answer);
            });
    } else if (const std::optional<FewValues> few = FewValues::count(columns)) {
        std::vector<decltype(onValue(DistinctValue{}))> answers(FewValues::slotCount);
        for (const std::uint16_t slot : few->ascending())
            answers[slot] = onValue(DistinctValue{valueOfKey((*few)[slot].key), (*few)[slot].positives, (*few)[slot].negatives});
        for (std::size_t i = 0; i < columns.size(); ++i)
            onCase(i, columns.positive(i), answers[few->find(orderedKey(columns.value(i)))]);
    } else {
        Sorted<CaseKey> sorted = sortAll<CaseKey>(columns);
        const CaseKey* const cases = sorted.elements.data();
        forEachRun(
            0, columns.size(), [&](std::size_t i) { return cases[i].key; },
            [&](std::size_t i) { return cases[i].positive(); },
            [&](std::size_t begin, std::size_t end, const DistinctValue& distinct) {
                const auto answer = onValue(distinct);
                for (std::size_t i = begin; i < end; ++i)
                    onCase(cases[i].index, cases[i].positive(), answer);
            });
    }
}

} // namespace ROCALG_920::valuesort
