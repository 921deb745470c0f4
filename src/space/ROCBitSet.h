#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ROCALG_920 {

/// Growable set of flags indexed by position, packed 64 to a word; bit i is bit (i mod 64) of word i / 64.
///
/// A position beyond the last word reads as clear. The set only grows: `set` appends words, nothing removes them.
/// Negative positions read as clear, and setting one does nothing.
class ROCBitSet {
public:
    /// One zero word.
    ROCBitSet() : words_(1) {}
    /// bits / 64 + 1 zero words; a negative size counts as 0.
    explicit ROCBitSet(int bits);

    /// Sets or clears a flag; grows the set to hold the position, also when clearing.
    void set(int index, bool value);
    [[nodiscard]] bool get(int index) const noexcept;
    /// Clears every flag; the number of words stays.
    void clear() noexcept;
    /// Two sets are equal when they hold the same positions, whatever their lengths.
    [[nodiscard]] bool operator==(const ROCBitSet& other) const noexcept;
    /// Diagnostic text: the words as decimal numbers, then the set positions, e.g. "data:{10}\nBits:[1:true,3:true]".
    [[nodiscard]] std::string toString() const;

private:
    std::vector<std::uint64_t> words_;
};

} // namespace ROCALG_920
