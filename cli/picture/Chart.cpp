#include "cli/picture/Chart.h"

#include "cli/picture/LabelPlaces.h"
#include "cli/picture/markup.h"
#include "cli/picture/textLines.h"
#include "cli/words/Failure.h"
#include "cli/words/Readable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace vexroc {

namespace {

using markup::pixels;

constexpr double margin = 12;
constexpr double lineHeight = 20; // of the legend and the notes
constexpr double sampleWidth = 60;
constexpr double left = 76; // room for the words beside the axes
constexpr double right = 24;
constexpr double below = 62;

/// A range with round numbers at even distances.
struct Scale {
    double from;
    double to;
    double step;

    [[nodiscard]] std::vector<double> ticks() const
    {
        std::vector<double> ticks;
        for (double i = std::ceil(from / step); i * step <= to + 1e-9 * step; ++i)
            ticks.push_back(i * step);
        return ticks;
    }
    /// Where a value stands between both ends.
    [[nodiscard]] double share(double value) const { return (value - from) / (to - from); }
};

/// About so many steps over a range, each 1, 2 or 5 times a power of ten.
double roundStep(double range, int steps)
{
    const double least = range / steps;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double times : {1.0, 2.0, 5.0})
        if (times * power >= least)
            return times * power;
    return 10.0 * power;
}

Scale scaleOf(double low, double high)
{
    if (!(low < high)) { // one value, or none
        const double middle = std::isfinite(low) ? low : 0.0;
        low = middle - 0.5;
        high = middle + 0.5;
    }
    return {low, high, roundStep(high - low, 6)};
}

class ChartPainter {
public:
    ChartPainter(const Chart& chart, const PictureStyle& style)
        : chart_(chart), style_(style), width_(style.width > 0 ? std::max(style.width, 240.0) : 560.0),
          top_(style.titles ? 40 : 14), notes_(notesIn(width_ - 2 * margin)), x_(xScale()), y_(yScale())
    {
        sideX_ = width_ - left - right;
        sideY_ = style.height > 0 ? heightOfAxes() : sideX_ * 0.75;
    }

    std::string svg()
    {
        const double height = top_ + sideY_ + restHeight();
        const double scale = style_.width > 0 ? style_.width / width_ : 1.0;
        svg_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + pixels(width_ * scale) + "\" height=\""
            + pixels(height * scale) + "\" viewBox=\"0 0 " + pixels(width_) + " " + pixels(height)
            + "\" font-family=\"sans-serif\" xml:space=\"preserve\" role=\"img\" aria-labelledby=\"title description\">"
            + "\n<title id=\"title\">" + markup::text(chart_.title) + "</title>\n<desc id=\"description\">"
            + markup::text(description()) + "</desc>\n"
            + "<rect x=\"-1%\" y=\"-1%\" width=\"102%\" height=\"102%\" fill=\"#ffffff\"/>\n";
        addAxes();
        addMarks();
        for (std::size_t i = 0; i < chart_.lines.size(); ++i)
            addBand(i);
        for (std::size_t i = 0; i < chart_.lines.size(); ++i)
            addLine(i);
        svg_ += "</g>\n";
        addLegend();
        return std::move(svg_) + "</svg>\n";
    }

private:
    [[nodiscard]] std::vector<std::string> notesIn(double room) const
    {
        std::vector<std::string> lines;
        for (const std::string& note : chart_.notes)
            for (std::string& line : wrapped(note, room, smallTextSize))
                lines.push_back(std::move(line));
        return lines;
    }
    [[nodiscard]] Scale xScale() const
    {
        double low = std::numeric_limits<double>::infinity();
        double high = -low;
        for (const ChartLine& line : chart_.lines)
            for (const PathPoint& point : line.points)
                if (std::isfinite(point.x)) {
                    low = std::min(low, point.x);
                    high = std::max(high, point.x);
                }
        return scaleOf(low, high);
    }
    /// References may leave the picture: a line that falls without end would flatten all others.
    [[nodiscard]] Scale yScale() const
    {
        if (chart_.yIsShare)
            return {0.0, 1.0, 0.2};
        double low = 0.0;
        double high = 0.0;
        const auto hold = [&](double y) {
            if (std::isfinite(y)) {
                low = std::min(low, y);
                high = std::max(high, y);
            }
        };
        for (const ChartLine& line : chart_.lines)
            for (std::size_t i = 0; i < line.points.size() && !line.isReference; ++i) {
                hold(line.points[i].y);
                if (!line.lower.empty()) {
                    hold(line.lower[i]);
                    hold(line.upper[i]);
                }
            }
        low = std::max(low, chart_.yLeast);
        const double room = 0.05 * (high - low);
        return scaleOf(low - room, high + room);
    }

    [[nodiscard]] double restHeight() const
    {
        return below + static_cast<double>(chart_.lines.size() + notes_.size()) * lineHeight + 2 * margin;
    }
    [[nodiscard]] double heightOfAxes() const
    {
        constexpr double shortest = 100;
        const double wanted = style_.height * (style_.width > 0 ? width_ / style_.width : 1.0) - top_ - restHeight();
        if (wanted < shortest)
            throw usageError("--plot-size is too low: legend and notes leave no room for the axes; give the width "
                             "alone, or a height of at least "
                             + pixels(std::ceil(style_.height + shortest - wanted)) + "px");
        return wanted;
    }

    [[nodiscard]] std::string description() const
    {
        std::string text = chart_.y + " against " + chart_.x + ":";
        for (const ChartLine& line : chart_.lines)
            text += " " + line.name + ";";
        text.back() = '.';
        return text;
    }

    [[nodiscard]] PathPoint place(double x, double y) const
    {
        return {sideX_ * x_.share(x), sideY_ * (1.0 - y_.share(y))};
    }
    [[nodiscard]] std::string colourOf(std::size_t line) const
    {
        if (chart_.lines[line].isReference)
            return "color=\"#606060\"";
        return style_.grey ? markup::greyOf(line) : markup::colourOf(line);
    }
    [[nodiscard]] std::string dashesOf(std::size_t line) const
    {
        static constexpr std::array ofReferences{" stroke-dasharray=\"4 4\"", " stroke-dasharray=\"1.5 3\""};
        if (!chart_.lines[line].isReference)
            return markup::dashesOf(line);
        const auto end = chart_.lines.begin() + static_cast<std::ptrdiff_t>(line);
        return ofReferences[static_cast<std::size_t>(
            std::count_if(chart_.lines.begin(), end, [](const ChartLine& other) { return other.isReference; }) % 2)];
    }

    void addText(const std::string& text, double x, double y, const std::string& more)
    {
        svg_ += "<text x=\"" + pixels(x) + "\" y=\"" + pixels(y) + "\"" + more + ">" + markup::text(text) + "</text>\n";
    }

    /// Opens the group of the axes, in whose places all lines are; what leaves them is cut off.
    void addAxes()
    {
        svg_ += "<clipPath id=\"axes\"><rect width=\"" + pixels(sideX_) + "\" height=\"" + pixels(sideY_)
            + "\"/></clipPath>\n<g transform=\"translate(" + pixels(left) + " " + pixels(top_) + ")\">\n";
        std::string grid;
        std::string ticks;
        for (const double x : x_.ticks()) {
            const std::string at = pixels(place(x, y_.from).x);
            grid += "M" + at + " 0V" + pixels(sideY_);
            ticks += "M" + at + " " + pixels(sideY_) + "v5";
        }
        for (const double y : y_.ticks()) {
            const std::string at = pixels(place(x_.from, y).y);
            grid += "M0 " + at + "H" + pixels(sideX_);
            ticks += "M-5 " + at + "H0";
        }
        svg_ += "<path stroke=\"#e4e4e4\" d=\"" + grid + "\"/>\n<path fill=\"none\" stroke=\"#606060\" d=\"M0 0V"
            + pixels(sideY_) + "H" + pixels(sideX_) + ticks + "\"/>\n<g font-size=\"13\" text-anchor=\"middle\">\n";
        addWords();
        svg_ += "</g>\n";
    }
    void addWords()
    {
        const auto number = [](double tick) {
            return readable(std::abs(tick) < 1e-12 ? 0.0 : tick, CellRole::measure);
        };
        double lastEnd = -left;
        for (const double x : x_.ticks()) { // as many as have room
            const std::string text = number(x);
            const double at = place(x, y_.from).x;
            if (at - textWidth(text, textSize) / 2 < lastEnd + 6)
                continue;
            addText(text, at, sideY_ + 21, "");
            lastEnd = at + textWidth(text, textSize) / 2;
        }
        for (const double y : y_.ticks())
            addText(number(y), -9, place(x_.from, y).y + 4.5, " text-anchor=\"end\"");
        if (style_.titles)
            addText(within(chart_.title, width_ - 2 * margin, 15), width_ / 2 - left, -14,
                    " font-size=\"15\" font-weight=\"bold\"");
        addText(within(chart_.x, sideX_, textSize), sideX_ / 2, sideY_ + 45, "");
        addText(within(chart_.y, sideY_, textSize), -sideY_ / 2, -left + 22, " transform=\"rotate(-90)\"");
    }

    void addMarks()
    {
        for (const double mark : chart_.marks)
            if (mark >= x_.from && mark <= x_.to)
                svg_ += "<path stroke=\"#606060\" stroke-dasharray=\"2 3\" d=\"M" + pixels(place(mark, y_.from).x)
                    + " 0V" + pixels(sideY_) + "\"/>\n";
    }

    /// The points that have a place, in pieces between those that have none.
    template <class YOf>
    [[nodiscard]] std::vector<std::vector<PathPoint>> pieces(const ChartLine& line, YOf yOf) const
    {
        std::vector<std::vector<PathPoint>> pieces(1);
        for (std::size_t i = 0; i < line.points.size(); ++i) {
            const double y = yOf(i);
            if (std::isfinite(line.points[i].x) && std::isfinite(y))
                pieces.back().push_back(place(line.points[i].x, y));
            else if (!pieces.back().empty())
                pieces.emplace_back();
        }
        return pieces;
    }

    void addBand(std::size_t i)
    {
        const ChartLine& line = chart_.lines[i];
        if (line.lower.empty())
            return;
        const auto lower = pieces(line, [&](std::size_t at) { return line.lower[at]; });
        const auto upper = pieces(line, [&](std::size_t at) { return line.upper[at]; });
        for (std::size_t piece = 0; piece < std::min(lower.size(), upper.size()); ++piece) {
            std::vector<PathPoint> outline = lower[piece];
            outline.insert(outline.end(), upper[piece].rbegin(), upper[piece].rend());
            svg_ += "<g " + colourOf(i)
                + " clip-path=\"url(#axes)\"><path fill=\"currentColor\" fill-opacity=\"0.15\" d=\""
                + markup::pathOf(outline) + "Z\"/></g>\n";
        }
    }

    void addLine(std::size_t i)
    {
        const ChartLine& line = chart_.lines[i];
        for (const std::vector<PathPoint>& piece : pieces(line, [&](std::size_t at) { return line.points[at].y; })) {
            std::vector<PathPoint> drawn;
            for (const std::size_t at : thinned(piece, {}))
                drawn.push_back(piece[at]);
            svg_ += "<g " + colourOf(i) + " clip-path=\"url(#axes)\" fill=\"none\" stroke=\"currentColor\" "
                + "stroke-linejoin=\"round\"><path stroke-width=\"2\"" + dashesOf(i) + " d=\"" + markup::pathOf(drawn)
                + "\"/></g>\n";
        }
    }

    void addLegend()
    {
        double baseline = top_ + sideY_ + below + margin;
        for (std::size_t i = 0; i < chart_.lines.size(); ++i, baseline += lineHeight) {
            svg_ += "<g " + colourOf(i) + "><line x1=\"" + pixels(margin) + "\" x2=\""
                + pixels(margin + sampleWidth - 8) + "\" y1=\"" + pixels(baseline - 4.5) + "\" y2=\""
                + pixels(baseline - 4.5) + "\" stroke=\"currentColor\" stroke-width=\"2\"" + dashesOf(i) + "/></g>\n";
            addText(within(chart_.lines[i].name, width_ - sampleWidth - 2 * margin, textSize), margin + sampleWidth,
                    baseline, " font-size=\"13\"");
        }
        for (const std::string& note : notes_) {
            addText(note, margin, baseline + 4, " font-size=\"12\" fill=\"#505050\"");
            baseline += lineHeight;
        }
    }

    const Chart& chart_;
    const PictureStyle& style_;
    double width_;
    double top_;
    std::vector<std::string> notes_;
    Scale x_;
    Scale y_;
    double sideX_ = 0;
    double sideY_ = 0;
    std::string svg_;
};

} // namespace

std::string svgChart(const Chart& chart, const PictureStyle& style) { return ChartPainter(chart, style).svg(); }

} // namespace vexroc
