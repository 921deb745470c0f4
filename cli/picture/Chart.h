#pragma once

#include "cli/picture/PictureStyle.h"
#include "cli/picture/Thinning.h"

#include <limits>
#include <string>
#include <vector>

namespace vexroc {

/// A line over axes with scales of their own, and the band that it lies in.
struct ChartLine {
    std::string name;               ///< visible text
    std::vector<PathPoint> points;  ///< ascending in x; a NaN interrupts the line
    std::vector<double> lower = {}; ///< of the band, parallel to the points; empty without
    std::vector<double> upper = {};
    bool isReference = false; ///< what others are compared with: grey and dashed
};

/// A picture of quantities against a number, such as a cut-off or a threshold.
struct Chart {
    std::string title;
    std::string x; ///< titles of the axes
    std::string y;
    std::vector<ChartLine> lines;
    std::vector<double> marks = {};                           ///< places on the x axis, such as chosen cut-offs
    std::vector<std::string> notes = {};                      ///< what makes it understood on its own; visible text
    double yLeast = -std::numeric_limits<double>::infinity(); ///< what lies below is cut off
    bool yIsShare = false;                                    ///< the y axis goes from 0 to 1, whatever the lines do
};

/// The chart as an SVG document: axes with round numbers, below them a legend and the notes. Text stays text; the
/// document refers to nothing outside it.
std::string svgChart(const Chart& chart, const PictureStyle& style = {});

} // namespace vexroc
