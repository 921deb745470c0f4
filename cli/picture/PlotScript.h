#pragma once

#include "cli/picture/DrawnCurve.h"

#include <string>
#include <string_view>

namespace vexroc {

/// A kind of picture that gnuplot draws. Places and sizes of a picture are thought in pixels of 1/96 inch.
struct PictureType {
    std::string_view ending; ///< of the file's name, in lower case
    const char* terminal;    ///< with its options
    double fontUnits;        ///< of the terminal in a pixel
    double sizeUnits;
    const char* sizeUnitName;
    bool needsGlyphs; ///< of all characters: the picture holds shapes instead of text
};

/// The type of a file with that name, letter case aside; null for another name.
const PictureType* pictureType(std::string_view file);

/// The commands and data that make gnuplot draw the curves into the file "picture" of its folder: ROC curves, with
/// precision-recall curves beside them when there are any, and the legend with all names below, however many.
std::string plotScript(const PictureType& type, const Drawing& drawing);

} // namespace vexroc
