#include "cli/picture/Thinning.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vexroc {

namespace {

double distance(const PathPoint& a, const PathPoint& b) { return std::fabs(a.x - b.x) + std::fabs(a.y - b.y); }

} // namespace

std::vector<std::size_t> thinned(std::span<const PathPoint> path, std::span<const std::size_t> always, std::size_t most)
{
    std::vector<std::size_t> drawn;
    if (path.size() <= most) {
        drawn.resize(path.size());
        std::iota(drawn.begin(), drawn.end(), std::size_t{0});
        return drawn;
    }
    double length = 0.0;
    for (std::size_t i = 1; i < path.size(); ++i)
        length += distance(path[i - 1], path[i]);
    // Two drawn neighbours together are longer than a step, so that at most twice as many are drawn as there are steps.
    const double step = 2.0 * length / static_cast<double>(most - 2);
    double sinceDrawn = 0.0;
    drawn.push_back(0);
    for (std::size_t i = 1; i < path.size(); ++i) {
        sinceDrawn += distance(path[i - 1], path[i]);
        const bool last = i + 1 == path.size();
        const bool wanted = std::ranges::find(always, i) != always.end();
        const bool farNext = !last && sinceDrawn + distance(path[i], path[i + 1]) > step;
        if (!last && !wanted && !farNext)
            continue;
        drawn.push_back(i);
        sinceDrawn = 0.0;
    }
    return drawn;
}

} // namespace vexroc
