#pragma once

#include "cli/picture/Thinning.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

// Places and lengths are pixels of a panel: from the left and from the top of its axes.

/// Font sizes.
constexpr int textSize = 13;
constexpr int smallTextSize = 12;

/// About how wide visible text is in a common sans-serif font: rather too wide than too narrow.
double textWidth(std::string_view visibleText, int fontSize);

struct Box {
    double left;
    double top;
    double right;
    double bottom;
};

/// Has the line from a to b a point inside the box?
bool crosses(const Box& box, PathPoint a, PathPoint b);

/// Have the line from a to b and that from c to d a point in common?
bool meet(PathPoint a, PathPoint b, PathPoint c, PathPoint d);

/// A text inside a panel.
struct PlacedLabel {
    std::string text;
    Box box;
    std::optional<PathPoint> leaderEnd; ///< where a thin line from the dot ends, for a label that stands off
};

/// Finds places inside the axes where a label covers no line, no dot and no other label.
class LabelPlaces {
public:
    /// Of axes that are so long.
    explicit LabelPlaces(double side) : side_(side) {}
    void avoidLine(const std::vector<PathPoint>& line) { lines_.push_back(line); }
    void avoidDot(PathPoint dot);

    /// Near a dot, the nearer the better, and on the same side of all lines as the dot; nothing where there is no room.
    std::optional<PlacedLabel> beside(PathPoint dot, const std::string& text, double farthest);
    /// Above or below a level line; nothing where there is no room.
    std::optional<PlacedLabel> along(double y, const std::string& text);

private:
    [[nodiscard]] bool isFree(const Box& box) const;
    [[nodiscard]] bool isClear(PathPoint dot, PathPoint end) const;

    double side_;
    std::vector<std::vector<PathPoint>> lines_;
    std::vector<Box> taken_; ///< by dots and labels
};

} // namespace vexroc
