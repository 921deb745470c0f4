#pragma once

#include <string>

namespace vexroc {

struct SvgLibrary;

/// Turns an SVG document into the kind of file that a name asks for: .svg as it is; .pdf, with lines and text; .png,
/// with twice the pixels of a screen, to print well. librsvg does it, opened when there is a PDF or PNG to make.
///
/// Life: made before the analysis, it finds out whether the file can be made at all; then convert.
/// Failure: throws a usage error for another ending, an output error where the library is absent or fails.
class Rasterizer {
public:
    /// `option` is what the errors name.
    Rasterizer(const std::string& option, const std::string& file);
    /// The bytes of the file; a PNG has so many dots to a pixel.
    [[nodiscard]] std::string convert(std::string svg, double resolution) const;

private:
    bool isPng_ = false;
    const SvgLibrary* library_ = nullptr; ///< null: the SVG is the file
};

} // namespace vexroc
