#include "cli/picture/PanelLabels.h"

#include "cli/output/Table.h"

#include <algorithm>
#include <cmath>

namespace vexroc {

namespace {

constexpr std::size_t mostLabels = 4;
constexpr double halfHeight = 0.022; // of a label, in the units of the axes
constexpr double lowest = 0.03;      // places of labels inside the axes
constexpr double highest = 0.97;
constexpr double gap = 0.025; // to the dot or the line

double widthOf(const std::string& text) { return textWidth(text, smallTextSize) / panelSide; }

/// Widths of characters in the widest of the fonts that stand for sans-serif, in units of the font size.
double characterWidth(unsigned char lead)
{
    constexpr std::string_view narrow = " !'(),-./:;I[\\]fijlrt|";
    constexpr std::string_view wide = "%@MWmw";
    const bool capital = lead >= 'A' && lead <= 'Z';
    if (lead >= 0x80)
        return lead >= 0xE1 ? 1.1 : 0.8; // from E1 on, among them full-width characters
    if (narrow.find(static_cast<char>(lead)) != std::string_view::npos)
        return 0.41;
    return wide.find(static_cast<char>(lead)) != std::string_view::npos ? 1.0 : capital ? 0.75 : 0.64;
}

/// Puts labels one by one where there is room.
class Places {
public:
    explicit Places(std::vector<PathPoint> dots) : dots_(std::move(dots)) {}

    /// The first free height at or below the wanted one, else the first above it.
    void add(PanelLabel label)
    {
        constexpr double step = 0.005;
        const double wanted = std::clamp(label.y, lowest, highest);
        label.y = wanted;
        while (label.y >= lowest && !isFree(label))
            label.y -= step;
        if (label.y < lowest)
            for (label.y = wanted; label.y < highest && !isFree(label);)
                label.y += step;
        labels_.push_back(std::move(label));
    }
    [[nodiscard]] std::vector<PanelLabel> take() { return std::move(labels_); }

private:
    [[nodiscard]] bool isFree(const PanelLabel& label) const
    {
        constexpr double dotSize = 0.012;
        const double right = label.x + label.width;
        const auto covers = [&](const PathPoint& dot) {
            return dot.x > label.x - dotSize && dot.x < right + dotSize
                && std::fabs(dot.y - label.y) < halfHeight + dotSize;
        };
        const auto overlaps = [&](const PanelLabel& other) {
            return other.x < right && label.x < other.x + other.width
                && std::fabs(other.y - label.y) < 2.0 * halfHeight;
        };
        return std::ranges::none_of(dots_, covers) && std::ranges::none_of(labels_, overlaps);
    }

    std::vector<PathPoint> dots_;
    std::vector<PanelLabel> labels_;
};

PathPoint dotOf(const DrawnCurve& curve) { return {1.0 - curve.best->specificity, curve.best->sensitivity}; }

} // namespace

double textWidth(std::string_view visibleText, int fontSize)
{
    double width = 0.0;
    for (const char c : visibleText)
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80)
            width += characterWidth(static_cast<unsigned char>(c)) * fontSize;
    return width;
}

std::vector<PanelLabel> cutOffLabels(const std::vector<DrawnCurve>& curves)
{
    if (curves.size() > mostLabels)
        return {};
    std::vector<std::size_t> fromTheTop;
    std::vector<PathPoint> dots;
    for (std::size_t c = 0; c < curves.size(); ++c) {
        if (!curves[c].best)
            continue;
        fromTheTop.push_back(c);
        dots.push_back(dotOf(curves[c]));
    }
    std::ranges::stable_sort(fromTheTop, std::ranges::greater{}, [&](std::size_t c) { return dotOf(curves[c]).y; });
    Places places(dots);
    for (const std::size_t c : fromTheTop) {
        const std::string text = "cut-off " + curves[c].cutOffText();
        const PathPoint dot = dotOf(curves[c]);
        // To the right of the dot and below it, where its own curve does not pass.
        places.add({.text = text,
                    .x = std::min(dot.x + gap, 0.99 - widthOf(text)),
                    .y = dot.y - gap,
                    .width = widthOf(text),
                    .curve = c});
    }
    return places.take();
}

std::vector<PrevalenceLine> prevalenceLines(const std::vector<DrawnCurve>& curves)
{
    std::vector<PrevalenceLine> lines;
    for (std::size_t c = 0; c < curves.size(); ++c) {
        const double prevalence = curves[c].prevalence();
        const auto same = std::ranges::find(lines, prevalence, &PrevalenceLine::prevalence);
        if (same == lines.end())
            lines.push_back({prevalence, c});
        else
            same->curve.reset();
    }
    if (lines.size() == 1)
        lines.front().curve.reset();
    return lines;
}

std::vector<PanelLabel> prevalenceLabels(const std::vector<PrevalenceLine>& lines)
{
    if (lines.size() > mostLabels)
        return {};
    Places places({});
    for (const PrevalenceLine& line : lines) {
        const bool roomAbove = line.prevalence + gap <= highest;
        const std::string text = "prevalence " + readable(line.prevalence, CellRole::statistic);
        places.add({.text = text,
                    .x = 0.015,
                    .y = line.prevalence + (roomAbove ? gap : -gap),
                    .width = widthOf(text),
                    .curve = line.curve});
    }
    return places.take();
}

} // namespace vexroc
