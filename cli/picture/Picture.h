#pragma once

#include "cli/picture/DrawnCurve.h"

#include <string>

namespace vexroc {

/// A drawing as an SVG document: the panels, below them the legend with all names, however many, and the notes. Text
/// stays text; the document refers to nothing outside it.
std::string svgPicture(const Drawing& drawing);

} // namespace vexroc
