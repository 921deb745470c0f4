#pragma once

#include "cli/picture/Thinning.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What SVG and page have in common.
namespace vexroc::markup {

/// A place or length in pixels, to a hundredth; without the zeros that say nothing.
std::string pixels(double value);

/// Visible text as it stands in SVG and HTML, also inside a quoted attribute.
std::string text(std::string_view visibleText);

/// What a path's d says of a line; level and upright parts in short.
std::string pathOf(const std::vector<PathPoint>& line);

/// The attributes that colour a curve and whatever stands for it: the colour itself, which lines and shapes in the
/// element take by the name currentColor, and a class for pages, which may colour it otherwise on dark.
std::string colourOf(std::size_t curve);

/// The same of a picture without colour.
std::string greyOf(std::size_t curve);

/// The attribute for the dashes of a curve; empty for a line without any.
std::string dashesOf(std::size_t curve);

} // namespace vexroc::markup
