#include "timing.h"

#include <algorithm>

namespace timing {

double median(std::vector<double>& times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    return *middle;
}

double medianSeconds(int calls, const std::function<void()>& work)
{
    std::vector<double> times;
    for (int i = 0; i < calls; ++i)
        times.push_back(seconds(work));
    return median(times);
}

} // namespace timing
