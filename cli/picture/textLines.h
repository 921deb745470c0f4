#pragma once

#include <string>
#include <vector>

namespace vexroc {

// Widths are pixels, as textWidth says.

/// The text, or both its ends, in no more than that width.
std::string within(const std::string& text, double width, int fontSize);

/// Breaks text at blanks into lines that are no wider, where that can be.
std::vector<std::string> wrapped(const std::string& text, double width, int fontSize);

} // namespace vexroc
