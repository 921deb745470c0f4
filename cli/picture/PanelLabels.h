#pragma once

#include "cli/picture/DrawnCurve.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// A side of a panel, whose axes go from 0 to 1, in pixels.
constexpr int panelSide = 440;
/// Font sizes in pixels.
constexpr int textSize = 13;
constexpr int smallTextSize = 11;

/// About how wide visible text is in a common sans-serif font: rather too wide than too narrow.
double textWidth(std::string_view visibleText, int fontSize);

/// A text inside a panel, at half its height.
struct PanelLabel {
    std::string text;
    double x; ///< of its left end, in the units of the axes
    double y;
    double width;
    std::optional<std::size_t> curve; ///< that it belongs to; none: to several
};

/// The cut-offs beside the dots, where they cover neither each other nor a dot. None with more curves than have room:
/// then the legend alone tells them.
std::vector<PanelLabel> cutOffLabels(const std::vector<DrawnCurve>& curves);

/// The precision of a test that tells nothing.
struct PrevalenceLine {
    double prevalence;
    std::optional<std::size_t> curve; ///< the one that has it; none: several, or all
};
/// Each prevalence once, in the order of the curves.
std::vector<PrevalenceLine> prevalenceLines(const std::vector<DrawnCurve>& curves);

/// What the lines are; none where there are too many: then the legend tells the prevalences.
std::vector<PanelLabel> prevalenceLabels(const std::vector<PrevalenceLine>& lines);

} // namespace vexroc
