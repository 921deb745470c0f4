#pragma once

#include <chrono>
#include <functional>
#include <vector>

namespace timing {

/// Wall-clock time of one call of the work.
template <class Work>
[[nodiscard]] double seconds(Work&& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Median of a list of times; the list is reordered.
[[nodiscard]] double median(std::vector<double>& times);

/// Median time of several calls.
[[nodiscard]] double medianSeconds(int calls, const std::function<void()>& work);

} // namespace timing
