#pragma once

#include "cli/picture/PlotScript.h"
#include "host/CancelFlag.h"

#include <string>

namespace vexroc {

/// A picture of ROC curves, with precision-recall curves beside them when there are any, drawn by gnuplot.
///
/// Life: made before the analysis, it finds out whether the picture can be drawn at all; then draw.
/// Failure: throws a usage error for a file whose name does not end in .svg, .pdf or .png, an output error where
/// gnuplot is absent, fails or takes longer than a minute; the failure of a cancel when one is requested.
class Plot {
public:
    explicit Plot(const std::string& file);
    /// The bytes of the picture.
    [[nodiscard]] std::string draw(const Drawing& drawing, VexCommon_920::CancelFlag& cancel) const;

private:
    const PictureType* type_;
    std::string gnuplot_;
};

} // namespace vexroc
