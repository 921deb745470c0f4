#pragma once

#include "cli/picture/PictureStyle.h"
#include "cli/system/Rasterizer.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace vexroc {

struct Report;

/// A picture that a command makes where a file for it is named; as typed.
struct PlotOptions {
    std::string file;
    std::string size;
    bool grey = false;
    bool noTitle = false;
};

/// --plot, --plot-size, --grey and --no-title; "Draw the curves".
void addPlotOptions(CLI::App& command, PlotOptions& options, const std::string& whatItDoes);

/// The picture before there is anything to draw: how it will look, and that its file can be made at all. Throws a usage
/// error.
class PlannedPicture {
public:
    explicit PlannedPicture(const PlotOptions& options);

    [[nodiscard]] bool isWanted() const noexcept { return rasterizer_.has_value(); }
    [[nodiscard]] const std::string& file() const noexcept { return file_; }
    [[nodiscard]] const PictureStyle& style() const noexcept { return style_; }
    /// The bytes of its file, from the SVG document.
    [[nodiscard]] std::string bytesOf(std::string svg) const;
    /// Adds the file to those of a report.
    void addTo(Report& report, std::string svg) const;

private:
    std::string file_;
    PictureStyle style_;
    std::optional<Rasterizer> rasterizer_;
};

} // namespace vexroc
