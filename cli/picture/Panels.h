#pragma once

#include "cli/picture/DrawnCurve.h"

#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// The size of a panel with the words around its axes, in pixels of 1/96 inch.
constexpr double panelWidth = 540;
constexpr double panelHeight = 556;

/// A panel as the contents of an svg element or of a group in one.
///
/// Elements of a curve have its position in the attribute data-curve.
struct Panel {
    std::string_view title;
    std::string_view x; ///< titles of the axes
    std::string_view y;
    std::string svg;
};

/// Who reads the panels: a page's script wants to know more than eyes do.
enum class PanelUse {
    seen,
    explored, ///< the group of a curve has its name, its cases and what each point stands for
};

/// ROC curves, and beside them precision-recall curves where there are any.
std::vector<Panel> panelsOf(const Drawing& drawing, PanelUse use);

} // namespace vexroc
