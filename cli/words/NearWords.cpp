#include "cli/words/NearWords.h"

#include "cli/words/Letters.h"
#include "cli/words/Lists.h"

#include <algorithm>
#include <cstddef>

namespace vexroc {

namespace {

/// Letters to replace, insert, drop or swap with their neighbour, letter case aside.
std::size_t editDistance(std::string_view a, std::string_view b)
{
    const std::size_t width = b.size() + 1;
    std::vector<std::size_t> distance((a.size() + 1) * width);
    const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& { return distance[i * width + j]; };
    const auto same = [&](std::size_t i, std::size_t j) { return lowerLetter(a[i - 1]) == lowerLetter(b[j - 1]); };
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                at(i, j) = i + j;
                continue;
            }
            at(i, j) = std::min({at(i - 1, j - 1) + (same(i, j) ? 0 : 1), at(i - 1, j) + 1, at(i, j - 1) + 1});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
        }
    }
    return distance.back();
}

} // namespace

std::vector<std::string> nearWords(std::string_view word, std::span<const std::string> candidates)
{
    struct Near {
        std::size_t distance;
        std::string_view word;
    };
    constexpr std::size_t longestWord = 200; // nobody mistypes longer ones
    const std::size_t farthest = std::max<std::size_t>(1, word.size() / 3);
    std::vector<Near> near;
    for (const std::string& candidate : candidates) {
        const std::size_t shorter = std::min(word.size(), candidate.size());
        if (candidate == word || std::max(word.size(), candidate.size()) > longestWord)
            continue;
        if (const std::size_t distance = editDistance(word, candidate); distance <= farthest && distance < shorter)
            near.push_back({distance, candidate});
    }
    std::ranges::stable_sort(near, {}, &Near::distance);
    std::vector<std::string> words;
    for (const Near& each : near)
        if (words.size() < 3 && std::ranges::find(words, each.word) == words.end())
            words.emplace_back(each.word);
    return words;
}

std::string didYouMean(std::string_view word, std::span<const std::string> candidates)
{
    const std::vector<std::string> near = nearWords(word, candidates);
    return near.empty() ? "" : "; did you mean " + listed(near, near.size()) + "?";
}

} // namespace vexroc
