#pragma once

#include "cli/picture/DrawnCurve.h"

#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

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

/// How panels are drawn. Lengths are pixels of 1/96 inch.
struct PanelStyle {
    PanelUse use = PanelUse::seen;
    double side = 440; ///< of the axes, which go from 0 to 1
    double right = 36; ///< room beside them
    bool grey = false;
    bool titles = true;

    /// The room for the words around the axes.
    [[nodiscard]] double left() const { return 64; }
    [[nodiscard]] double top() const { return titles ? 40 : 14; }
    [[nodiscard]] double width() const { return left() + side + right; }
    [[nodiscard]] double height() const { return top() + side + 76; }
};

/// ROC curves, and beside them precision-recall curves where there are any.
std::vector<Panel> panelsOf(const Drawing& drawing, const PanelStyle& style);

} // namespace vexroc
