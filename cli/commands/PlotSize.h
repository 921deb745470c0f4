#pragma once

#include "cli/picture/PictureStyle.h"

#include <string>

namespace vexroc {

/// Sets the size that --plot-size names, such as 85mm, 900px or 6inx4in, and the resolution that goes with its unit:
/// pixels are dots, lengths are printed with 300 dots to an inch. Throws a usage error.
void setPlotSize(const std::string& text, PictureStyle& style);

} // namespace vexroc
