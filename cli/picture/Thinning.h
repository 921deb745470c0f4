#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace vexroc {

struct PathPoint {
    double x;
    double y;
};

/// No curve is drawn with many more points than a screen can show.
constexpr std::size_t mostDrawnPoints = 2000;

/// Which points of a path to draw: positions, ascending, never more than `most` beside those of `always`. Both ends and
/// those of `always` are among them. All points where there are no more than `most`.
///
/// A point left out lies no farther along the path from the drawn one before it, right or left plus up or down, than
/// 2 length / (most - 2): for a ROC curve, whose length is 2, about 0.002.
std::vector<std::size_t> thinned(std::span<const PathPoint> path, std::span<const std::size_t> always,
                                 std::size_t most = mostDrawnPoints);

} // namespace vexroc
