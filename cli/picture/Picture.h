#pragma once

#include "cli/picture/DrawnCurve.h"
#include "cli/picture/PictureStyle.h"

#include <string>

namespace vexroc {

/// A drawing as an SVG document: the panels, below them the legend with all names, however many, and the notes. Text
/// stays text; the document refers to nothing outside it. A narrow picture keeps the size of its text. Throws a usage
/// error for a height that leaves no room for the axes.
std::string svgPicture(const Drawing& drawing, const PictureStyle& style = {});

} // namespace vexroc
