#include "cli/picture/LabelPlaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace vexroc {

namespace {

constexpr double labelHeight = 16;
constexpr double edge = 4; // between a label and the axes

Box boxAround(PathPoint centre, double width, double height)
{
    return {.left = centre.x - width / 2,
            .top = centre.y - height / 2,
            .right = centre.x + width / 2,
            .bottom = centre.y + height / 2};
}

Box labelBox(PathPoint centre, const std::string& text)
{
    return boxAround(centre, textWidth(text, smallTextSize) + 6, labelHeight);
}

bool overlap(const Box& a, const Box& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool isInside(double side, const Box& box)
{
    return box.left >= edge && box.top >= edge && box.right <= side - edge && box.bottom <= side - edge;
}

/// Widths of characters in the widest of the fonts that stand for sans-serif, in units of the font size.
double characterWidth(unsigned char lead)
{
    constexpr std::string_view narrow = " !'(),-./:;I[\\]fijlrt|";
    constexpr std::string_view wide = "%@MWmw";
    const bool capital = lead >= 'A' && lead <= 'Z';
    if (lead >= 0x80)
        return lead >= 0xF0 ? 1.4 : lead >= 0xE1 ? 1.1 : 0.8; // pictures; from E1 on, among them full-width characters
    if (narrow.find(static_cast<char>(lead)) != std::string_view::npos)
        return 0.41;
    return wide.find(static_cast<char>(lead)) != std::string_view::npos ? 1.0 : capital ? 0.75 : 0.64;
}

/// Does something hold of a part of a line, straight from one point to the next?
bool anyPart(const std::vector<std::vector<PathPoint>>& lines, auto holds)
{
    for (const std::vector<PathPoint>& line : lines)
        for (std::size_t i = 1; i < line.size(); ++i)
            if (holds(line[i - 1], line[i]))
                return true;
    return false;
}

} // namespace

double textWidth(std::string_view visibleText, int fontSize)
{
    double width = 0.0;
    for (const char c : visibleText)
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80)
            width += characterWidth(static_cast<unsigned char>(c)) * fontSize;
    return width;
}

bool crosses(const Box& box, PathPoint a, PathPoint b)
{
    // Liang and Barsky: the part of the line, from 0 at a to 1 at b, that lies between each pair of sides.
    double from = 0.0;
    double to = 1.0;
    const auto clip = [&](double start, double step, double low, double high) {
        if (step == 0.0)
            return start > low && start < high;
        const double first = (low - start) / step;
        const double second = (high - start) / step;
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
        return from < to;
    };
    return clip(a.x, b.x - a.x, box.left, box.right) && clip(a.y, b.y - a.y, box.top, box.bottom);
}

bool meet(PathPoint a, PathPoint b, PathPoint c, PathPoint d)
{
    // On which side of the line from p to q: the sign tells.
    const auto side = [](PathPoint p, PathPoint q, PathPoint r) {
        return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
    };
    return side(a, b, c) * side(a, b, d) <= 0 && side(c, d, a) * side(c, d, b) <= 0;
}

void LabelPlaces::avoidDot(PathPoint dot)
{
    constexpr double size = 14;
    taken_.push_back(boxAround(dot, size, size));
}

std::optional<PlacedLabel> LabelPlaces::beside(PathPoint dot, const std::string& text, double farthest)
{
    constexpr double nearest = 8;
    constexpr double step = 6;
    constexpr double besides = 16; // a label nearer than this needs no line to its dot
    // Clockwise from the right, in degrees: first where a curve above the diagonal leaves room.
    constexpr std::array directions{30, 15, 45, 0, 60, 75, 90, 345, 330, 110, 135, 160, 180, 200, 225, 300, 270, 250};
    const double halfWidth = labelBox(dot, text).right - dot.x;
    for (double distance = nearest; distance <= farthest; distance += step) {
        for (const int degrees : directions) {
            const double x = std::cos(degrees * std::numbers::pi / 180);
            const double y = std::sin(degrees * std::numbers::pi / 180);
            const Box box = labelBox({dot.x + x * distance + std::clamp(2 * x, -1.0, 1.0) * halfWidth,
                                      dot.y + y * distance + std::clamp(2 * y, -1.0, 1.0) * labelHeight / 2},
                                     text);
            const PathPoint end{std::clamp(dot.x, box.left, box.right), std::clamp(dot.y, box.top, box.bottom)};
            if (!isFree(box) || !isClear(dot, end))
                continue;
            taken_.push_back(box);
            avoidLine({dot, end});
            const bool standsOff = std::hypot(end.x - dot.x, end.y - dot.y) > besides;
            return PlacedLabel{text, box, standsOff ? std::optional(end) : std::nullopt};
        }
    }
    return std::nullopt;
}

std::optional<PlacedLabel> LabelPlaces::along(double y, const std::string& text)
{
    constexpr double gap = 3;
    constexpr double step = 6;
    const double halfWidth = textWidth(text, smallTextSize) / 2 + 3;
    for (const double side : {-1.0, 1.0}) {
        for (double x = edge + halfWidth; x <= side_; x += step) {
            const Box box = labelBox({x, y + side * (gap + labelHeight / 2)}, text);
            if (!isFree(box))
                continue;
            taken_.push_back(box);
            return PlacedLabel{text, box, std::nullopt};
        }
    }
    return std::nullopt;
}

bool LabelPlaces::isFree(const Box& box) const
{
    constexpr double air = 2; // between a label and a line
    const Box wide{box.left - air, box.top - air, box.right + air, box.bottom + air};
    const auto covers = [&](const Box& other) { return overlap(wide, other); };
    return isInside(side_, box) && std::ranges::none_of(taken_, covers)
        && !anyPart(lines_, [&](PathPoint a, PathPoint b) { return crosses(wide, a, b); });
}

/// Is there nothing between a dot, which its own curve runs through, and the end of its label?
bool LabelPlaces::isClear(PathPoint dot, PathPoint end) const
{
    constexpr double ownCurve = 10; // and the box of the dot
    const double length = std::hypot(end.x - dot.x, end.y - dot.y);
    if (length <= ownCurve)
        return true;
    const double share = ownCurve / length;
    const PathPoint start{dot.x + share * (end.x - dot.x), dot.y + share * (end.y - dot.y)};
    const auto crossed = [&](const Box& box) { return crosses(box, start, end); };
    return std::ranges::none_of(taken_, crossed)
        && !anyPart(lines_, [&](PathPoint a, PathPoint b) { return meet(a, b, start, end); });
}

} // namespace vexroc
