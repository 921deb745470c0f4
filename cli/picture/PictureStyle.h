#pragma once

namespace vexroc {

/// How a picture looks. Lengths are pixels of 1/96 inch.
struct PictureStyle {
    bool grey = false;
    bool titles = true;    ///< above the panels
    double width = 0;      ///< 0: what the picture needs
    double height = 0;     ///< likewise, at its width
    double resolution = 2; ///< dots of a PNG to a pixel
};

} // namespace vexroc
