#include "space/ROCBitSet.h"

#include <algorithm>
#include <cstddef>
#include <tuple>

namespace ROCALG_920 {

namespace {

constexpr int bitsPerWord = 64;

std::size_t wordOf(int index) { return static_cast<std::size_t>(index / bitsPerWord); }
std::uint64_t maskOf(int index) { return std::uint64_t{1} << (index % bitsPerWord); }

} // namespace

ROCBitSet::ROCBitSet(int bits) : words_(wordOf(std::max(bits, 0)) + 1) {}

void ROCBitSet::set(int index, bool value)
{
    if (index < 0)
        return;
    if (wordOf(index) >= words_.size())
        words_.resize(wordOf(index) + 1);
    if (value)
        words_[wordOf(index)] |= maskOf(index);
    else
        words_[wordOf(index)] &= ~maskOf(index);
}

bool ROCBitSet::get(int index) const noexcept
{
    return index >= 0 && wordOf(index) < words_.size() && (words_[wordOf(index)] & maskOf(index)) != 0;
}

void ROCBitSet::clear() noexcept { std::ranges::fill(words_, 0); }

bool ROCBitSet::operator==(const ROCBitSet& other) const noexcept
{
    const auto& [shorter, longer] =
        words_.size() < other.words_.size() ? std::tie(words_, other.words_) : std::tie(other.words_, words_);
    const auto tail = longer.begin() + static_cast<std::ptrdiff_t>(shorter.size());
    return std::equal(shorter.begin(), shorter.end(), longer.begin())
        && std::all_of(tail, longer.end(), [](std::uint64_t word) { return word == 0; });
}

std::string ROCBitSet::toString() const
{
    std::string text = "data:{";
    for (const std::uint64_t& word : words_) {
        if (&word != &words_.front())
            text += ',';
        text += std::to_string(word);
    }
    text += "}\nBits:[";
    const std::size_t firstEntry = text.size();
    for (std::size_t position = 0; position < words_.size() * bitsPerWord; ++position) {
        if ((words_[position / bitsPerWord] >> (position % bitsPerWord) & 1) == 0)
            continue;
        if (text.size() > firstEntry)
            text += ',';
        text += std::to_string(position) + ":true";
    }
    return text + ']';
}

} // namespace ROCALG_920
