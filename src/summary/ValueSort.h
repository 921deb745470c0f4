#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

/// Orders observations by test value in linear time.
///
/// Doubles become unsigned integers of the same order. They are scattered once into buckets by leading bits, the bucket
/// borders equalised by a sample; each bucket is then split again by the bits in which its own elements differ, down to
/// a handful that insertion orders. No input takes more than a few passes per eight bytes of key.
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
/// keys that share that bit, and `Sorted` tells where it changes.
struct StateWord {
    Key word;

    [[nodiscard]] Key order() const noexcept { return word; }
    [[nodiscard]] Key key(Key highestBit) const noexcept { return word >> 1 | highestBit; }
    [[nodiscard]] bool positive() const noexcept { return (word & 1) != 0; }
    [[nodiscard]] static StateWord of(Key key, bool positive, std::size_t) noexcept
    {
        return {key << 1 | Key{positive}};
    }
};

/// A key with the position of its case.
struct CaseKey {
    Key key;
    std::uint64_t indexAndState;

    [[nodiscard]] Key order() const noexcept { return key; }
    [[nodiscard]] std::size_t index() const noexcept { return indexAndState >> 1; }
    [[nodiscard]] bool positive() const noexcept { return (indexAndState & 1) != 0; }
    [[nodiscard]] static CaseKey of(Key key, bool positive, std::size_t index) noexcept
    {
        return {key, std::uint64_t{index} << 1 | std::uint64_t{positive}};
    }
};

/// An allocator for elements that are written before they are read: nothing is cleared first.
template <class T>
struct UnclearedAllocator : std::allocator<T> {
    template <class U>
    struct rebind {
        using other = UnclearedAllocator<U>;
    };
    template <class U>
    void construct(U* place) noexcept
    {
        ::new (static_cast<void*>(place)) U;
    }
    template <class U, class... Args>
    void construct(U* place, Args&&... args)
    {
        ::new (static_cast<void*>(place)) U(std::forward<Args>(args)...);
    }
};

template <class T>
using UnclearedVector = std::vector<T, UnclearedAllocator<T>>;

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

/// Up to so many elements are fastest ordered by insertion.
inline constexpr std::size_t byInsertion = 20;

template <class Element>
void sortBucket(Element* first, std::size_t count, Element* scratch) noexcept;

/// Splits elements into up to 2^maxCellBits cells by the bits in which they differ, and sorts the cells. Position is
/// wide enough for the count; the narrower, the less of the nearest cache the ends of the cells take.
template <int maxCellBits, class Position, class Element>
void splitBucket(Element* first, std::size_t count, Element* scratch) noexcept
{
    Key low = first[0].order();
    Key high = low;
    for (std::size_t i = 1; i < count; ++i) {
        low = std::min(low, first[i].order());
        high = std::max(high, first[i].order());
    }
    if (low == high)
        return;
    const int shift = cellShift(low, high, std::min(static_cast<int>(std::bit_width(count)), maxCellBits));
    const Key base = low >> shift;
    const std::size_t cells = static_cast<std::size_t>((high >> shift) - base) + 1;
    const auto cellOf = [&](const Element& e) { return static_cast<std::size_t>((e.order() >> shift) - base); };

    std::array<Position, (std::size_t{1} << maxCellBits) + 1> ends;
    std::fill_n(ends.begin(), cells + 1, Position{0});
    for (std::size_t i = 0; i < count; ++i)
        ++ends[cellOf(first[i]) + 1];
    Position fullest = 0;
    for (std::size_t cell = 1; cell <= cells; ++cell) {
        fullest = std::max(fullest, ends[cell]);
        ends[cell] += ends[cell - 1];
    }
    for (std::size_t i = 0; i < count; ++i) // turns each start into its end
        scratch[ends[cellOf(first[i])]++] = first[i];
    std::copy_n(scratch, count, first);

    if (shift == 0)
        return; // each cell holds one key
    if (fullest <= byInsertion)
        return insertionSort(first, count); // nothing moves beyond its cell
    for (std::size_t cell = 0, begin = 0; cell < cells; begin = ends[cell++])
        sortBucket(first + begin, ends[cell] - begin, scratch);
}

/// Sorts elements whose orders are comparable; scratch holds as many. Every level of the recursion takes off at least
/// four bits, and small buckets take little of the stack.
template <class Element>
void sortBucket(Element* first, std::size_t count, Element* scratch) noexcept
{
    if (count <= byInsertion)
        insertionSort(first, count);
    else if (count < 256)
        splitBucket<8, std::uint32_t>(first, count, scratch);
    else if (count <= std::numeric_limits<std::uint32_t>::max())
        splitBucket<11, std::uint32_t>(first, count, scratch);
    else
        splitBucket<11, std::uint64_t>(first, count, scratch);
}

/// Maps keys to buckets in ascending order. Cells of equal width, fine enough to tell binades apart, are halved
/// further or put together, as a sample of the keys says, so that buckets become about equally full.
class BucketMap {
public:
    template <class Columns>
    BucketMap(const Columns& columns, Key low, Key high)
        : shift_(cellShift(low, high, std::min(static_cast<int>(std::bit_width(columns.size())), cellBits))),
          base_(low >> shift_)
    {
        const std::size_t cells = static_cast<std::size_t>((high >> shift_) - base_) + 1;
        std::array<std::uint32_t, std::size_t{1} << cellBits> sampled;
        std::fill_n(sampled.begin(), cells, 0u);
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
            entries_[cell] = {next, static_cast<std::uint16_t>(shift_ - bits),
                              static_cast<std::uint16_t>((1u << bits) - 1)};
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
        return std::clamp<std::size_t>(cases / 512, 1, 1024);
    }
    [[nodiscard]] std::size_t cellOf(Key key) const noexcept
    {
        return static_cast<std::size_t>((key >> shift_) - base_);
    }

    int shift_;
    Key base_;
    std::array<Entry, std::size_t{1} << cellBits> entries_;
    std::size_t buckets_ = 0;
    std::size_t firstUpperBucket_ = 0;
};

/// All elements in ascending order; those before `firstUpper` have negative values.
template <class Element>
struct Sorted {
    UnclearedVector<Element> elements;
    std::size_t firstUpper = 0;

    [[nodiscard]] double valueAt(std::size_t i) const noexcept
    {
        return valueOfKey(elements[i].key(i >= firstUpper ? signBit : 0));
    }
    /// How often the value changes from one element to the next.
    [[nodiscard]] std::size_t countSteps() const noexcept
    {
        std::size_t steps = 0;
        for (std::size_t i = 1; i < elements.size(); ++i)
            steps += elements[i - 1].key(0) != elements[i].key(0);
        // Two values may differ in the bit only that the halves of the list stand for.
        const bool hidden = firstUpper > 0 && firstUpper < elements.size()
            && elements[firstUpper - 1].key(0) == elements[firstUpper].key(0);
        return steps + hidden;
    }
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
    std::vector<std::size_t> ends(bucketOf.buckets() + 1);
    for (std::size_t i = 0; i < count; ++i)
        ++ends[bucketOf(orderedKey(columns.value(i))) + 1];
    const std::size_t largest = *std::ranges::max_element(ends);
    for (std::size_t bucket = 1; bucket < ends.size(); ++bucket)
        ends[bucket] += ends[bucket - 1];

    Sorted<Element> sorted{UnclearedVector<Element>(count), ends[bucketOf.firstUpperBucket()]};
    Element* const elements = sorted.elements.data();
    for (std::size_t i = 0; i < count; ++i) { // turns each start into its end
        const Key key = orderedKey(columns.value(i));
        elements[ends[bucketOf(key)]++] = Element::of(key, columns.positive(i), i);
    }
    UnclearedVector<Element> scratch(largest);
    for (std::size_t bucket = 0, begin = 0; bucket < bucketOf.buckets(); begin = ends[bucket++])
        sortBucket(elements + begin, ends[bucket] - begin, scratch.data());
    return sorted;
}

} // namespace ROCALG_920::valuesort
