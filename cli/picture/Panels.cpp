#include "cli/picture/Panels.h"

#include "cli/picture/LabelPlaces.h"
#include "cli/picture/markup.h"
#include "cli/words/Readable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vexroc {

namespace {

using markup::pathOf;
using markup::pixels;

constexpr std::size_t mostLabelled = 4;  // with more curves than these, the legend alone tells numbers
constexpr std::size_t mostTwoWidths = 8; // with more, lines of two widths confuse
constexpr const char* grey = "#606060";

/// Points without a precision, where nothing is called positive, have no place.
std::vector<PrecisionRecallPoint> placed(std::vector<PrecisionRecallPoint> points)
{
    std::erase_if(points, [](const PrecisionRecallPoint& point) { return std::isnan(point.precision); });
    return points;
}

std::string attribute(const char* name, const std::string& value)
{
    return std::string(" ") + name + "=\"" + value + "\"";
}

std::string at(const char* x, const char* y, PathPoint point)
{
    return attribute(x, pixels(point.x)) + attribute(y, pixels(point.y));
}

std::string linePath(const std::string& d, double width, const std::string& dashes)
{
    return "<path" + attribute("d", d) + attribute("stroke-width", pixels(width)) + dashes + "/>\n";
}

std::string dashedLine(PathPoint from, PathPoint to)
{
    return "<line" + at("x1", "y1", from) + at("x2", "y2", to) + " stroke-dasharray=\"4 4\"/>\n";
}

std::string pointText(const DrawnCurve& curve, const CutOff& point)
{
    return std::to_string(point.falsePositive) + " " + std::to_string(point.truePositive) + " "
        + curve.cutOffText(point);
}

// What the page's script reads: "false positives, true positives, cut-off" of a point that stands for a cut-off,
// "recall, precision" of an interpolated one.

std::string rocData(const DrawnCurve& curve)
{
    std::string data;
    for (const CutOff& point : curve.roc)
        data.append(data.empty() ? "" : ";").append(pointText(curve, point));
    return data;
}

std::string precisionRecallData(const DrawnCurve& curve)
{
    const auto rate = [](double value) { return readable(value, CellRole::statistic); };
    std::string data;
    for (const auto& [precision, recall, measured] : placed(curve.precisionRecall))
        data.append(data.empty() ? "" : ";")
            .append(measured ? pointText(curve, *measured) : rate(recall) + " " + rate(precision));
    return data;
}

/// The precision of a test that tells nothing.
struct PrevalenceLine {
    double prevalence;
    std::optional<std::size_t> curve; ///< the one that has it; none: several, or all
};

/// Each prevalence once, in the order of the curves.
std::vector<PrevalenceLine> prevalenceLines(const std::vector<DrawnCurve>& curves)
{
    std::vector<PrevalenceLine> lines;
    for (std::size_t c = 0; c < curves.size(); ++c) {
        const double prevalence = curves[c].prevalence();
        const auto same = std::ranges::find(lines, prevalence, &PrevalenceLine::prevalence);
        if (same == lines.end())
            lines.push_back({prevalence, c});
        else
            same->curve.reset();
    }
    if (lines.size() == 1)
        lines.front().curve.reset();
    return lines;
}

/// Draws the panels of one drawing.
class Painter {
public:
    Painter(const Drawing& drawing, const PanelStyle& style) : curves_(drawing.curves), style_(style) {}

    Panel roc()
    {
        Panel panel{"ROC curve", "1 - specificity", "sensitivity", {}};
        begin(panel);
        addBands();
        svg_ += "<g stroke=\"#606060\" class=\"frame\">" + dashedLine(place(0, 0), place(1, 1)) + "</g>\n";
        for (std::size_t c = 0; c < curves_.size(); ++c)
            addCurve(c, rocData, linePath(pathOf(rocLine(curves_[c])), width(), markup::dashesOf(c)));
        addCutOffLabels();
        addDots();
        if (std::ranges::all_of(curves_, [](const DrawnCurve& curve) { return curve.roc.empty(); }))
            addText("no curve to draw", style_.side / 2, style_.side / 4,
                    " class=\"ink\" font-size=\"13\" text-anchor=\"middle\"");
        return end(std::move(panel));
    }

    Panel precisionRecall()
    {
        Panel panel{"Precision-recall curve", "recall", "precision", {}};
        begin(panel);
        const std::vector<PrevalenceLine> lines = prevalenceLines(curves_);
        for (const auto& [prevalence, curve] : lines)
            svg_ += groupOf(curve) + "<g stroke=\"currentColor\">"
                + dashedLine(place(0, prevalence), place(1, prevalence)) + "</g></g>\n";
        for (std::size_t c = 0; c < curves_.size(); ++c)
            addCurve(c, precisionRecallData, precisionRecallPaths(c));
        addPrevalenceLabels(lines);
        return end(std::move(panel));
    }

private:
    [[nodiscard]] PathPoint place(double x, double y) const { return {style_.side * x, style_.side * (1.0 - y)}; }
    [[nodiscard]] PathPoint rocPlace(const CutOff& point) const
    {
        return place(1.0 - point.specificity, point.sensitivity);
    }
    [[nodiscard]] PathPoint dotOf(const DrawnCurve& curve) const { return rocPlace(*curve.best); }

    [[nodiscard]] std::vector<PathPoint> rocLine(const DrawnCurve& curve) const
    {
        std::vector<PathPoint> line;
        for (const CutOff& point : curve.roc)
            line.push_back(rocPlace(point));
        return line;
    }

    [[nodiscard]] std::vector<PathPoint> precisionRecallLine(const DrawnCurve& curve) const
    {
        std::vector<PathPoint> line;
        for (const PrecisionRecallPoint& point : placed(curve.precisionRecall))
            line.push_back(place(point.recall, point.precision));
        return line;
    }

    /// The measured parts of a precision-recall curve; a point alone between interpolated ones becomes a short line.
    [[nodiscard]] std::string measuredPath(const std::vector<PrecisionRecallPoint>& points) const
    {
        std::string path;
        std::vector<PathPoint> part;
        const auto endPart = [&] {
            if (part.size() == 1)
                part = {{part[0].x - 1, part[0].y}, {part[0].x + 1, part[0].y}};
            path += pathOf(part);
            part.clear();
        };
        for (const PrecisionRecallPoint& point : points) {
            if (point.measured)
                part.push_back(place(point.recall, point.precision));
            else
                endPart();
        }
        endPart();
        return path;
    }

    [[nodiscard]] std::string colourOf(std::size_t curve) const
    {
        return style_.grey ? markup::greyOf(curve) : markup::colourOf(curve);
    }

    /// The start of an element that belongs to a curve; to several without one.
    [[nodiscard]] std::string groupOf(const std::optional<std::size_t>& curve) const
    {
        if (!curve)
            return std::string("<g") + attribute("color", grey) + " class=\"soft\">";
        return "<g " + colourOf(*curve) + attribute("data-curve", std::to_string(*curve)) + ">";
    }

    [[nodiscard]] double width() const { return curves_.size() > mostTwoWidths ? 1.5 : 2.0; }

    void addText(std::string_view text, double x, double y, const char* more)
    {
        svg_ += "<text" + at("x", "y", {x, y}) + more + ">" + markup::text(text) + "</text>\n";
    }

    /// Grid, frame and the words around them. Places are those of the axes.
    void begin(const Panel& panel)
    {
        svg_ =
            "<g transform=\"translate(" + pixels(style_.left()) + " " + pixels(style_.top()) + ")\" class=\"axes\">\n";
        std::string grid;
        std::string ticks;
        constexpr std::array shares{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"};
        constexpr int steps = shares.size() - 1;
        for (int i = 0; i <= steps; ++i) {
            const double from = style_.side * i / steps;
            const std::string side = pixels(style_.side);
            grid += "M0 " + pixels(from) + "H" + side + "M" + pixels(from) + " 0V" + side;
            ticks += "M-5 " + pixels(from) + "H0M" + pixels(from) + " " + side + "v5";
        }
        svg_ += "<path class=\"grid\" stroke=\"#e4e4e4\" d=\"" + grid
            + "\"/>\n<path class=\"frame\" fill=\"none\" "
              "stroke=\"#606060\" d=\"M0 0V"
            + pixels(style_.side) + "H" + pixels(style_.side) + ticks + "\"/>\n";
        svg_ += "<g class=\"ink\" font-size=\"13\" text-anchor=\"middle\">\n";
        for (int i = 0; i <= steps; ++i) {
            addText(shares[i], style_.side * i / steps, style_.side + 21, "");
            addText(shares[i], -9, style_.side * (steps - i) / steps + 4.5, " text-anchor=\"end\"");
        }
        if (style_.titles)
            addText(panel.title, style_.side / 2, -14, " font-size=\"15\" font-weight=\"bold\"");
        addText(panel.x, style_.side / 2, style_.side + 45, "");
        addText(panel.y, -style_.side / 2, -42, " transform=\"rotate(-90)\"");
        svg_ += "</g>\n";
    }

    Panel end(Panel panel)
    {
        panel.svg = std::move(svg_) + "</g>\n";
        return panel;
    }

    void addBands()
    {
        for (std::size_t c = 0; c < curves_.size(); ++c) {
            std::vector<PathPoint> outline;
            for (const BandPoint& point : curves_[c].band)
                outline.push_back(place(1.0 - point.specificity, point.lower));
            for (auto point = curves_[c].band.rbegin(); point != curves_[c].band.rend(); ++point)
                outline.push_back(place(1.0 - point->specificity, point->upper));
            if (!outline.empty())
                svg_ += groupOf(c) + "<path fill=\"currentColor\" fill-opacity=\"0.15\" d=\"" + pathOf(outline)
                    + "Z\"/></g>\n";
        }
    }

    void addCurve(std::size_t c, std::string (*dataOf)(const DrawnCurve&), const std::string& paths)
    {
        std::string more;
        if (style_.use == PanelUse::explored)
            more = attribute("data-name", markup::text(curves_[c].name))
                + attribute("data-positive", std::to_string(curves_[c].positive))
                + attribute("data-negative", std::to_string(curves_[c].negative))
                + attribute("data-points", dataOf(curves_[c]));
        svg_ += "<g " + colourOf(c) + attribute("data-curve", std::to_string(c)) + more
            + " fill=\"none\" stroke=\"currentColor\" stroke-linejoin=\"round\">\n" + paths + "</g>\n";
    }

    /// Thick where points are measured; with many curves, one width.
    [[nodiscard]] std::string precisionRecallPaths(std::size_t c) const
    {
        const std::string whole = pathOf(precisionRecallLine(curves_[c]));
        if (curves_.size() > mostTwoWidths)
            return linePath(whole, width(), markup::dashesOf(c));
        return linePath(whole, 1.0, "")
            + linePath(measuredPath(placed(curves_[c].precisionRecall)), 2.5, markup::dashesOf(c));
    }

    void addDots()
    {
        for (std::size_t c = 0; c < curves_.size(); ++c)
            if (curves_[c].best)
                svg_ += groupOf(c) + "<circle" + at("cx", "cy", dotOf(curves_[c]))
                    + " r=\"5\" fill=\"currentColor\" stroke=\"#ffffff\" stroke-width=\"1.5\"/></g>\n";
    }

    void addLabel(const PlacedLabel& label, const std::optional<std::size_t>& curve)
    {
        const Box& box = label.box;
        svg_ += groupOf(curve) + "<g class=\"label\">";
        if (label.leaderEnd)
            svg_ += "<line" + at("x1", "y1", dotOf(curves_[*curve])) + at("x2", "y2", *label.leaderEnd)
                + " stroke=\"currentColor\" stroke-width=\"0.8\"/>";
        svg_ += "<rect class=\"paper\" fill=\"#ffffff\"" + at("x", "y", {box.left, box.top})
            + at("width", "height", {box.right - box.left, box.bottom - box.top}) + "/>";
        addText(label.text, box.left + 3, box.bottom - 4, " class=\"ink\" font-size=\"12\"");
        svg_ += "</g></g>\n";
    }

    /// With the word where all find room near their dots, else the numbers alone.
    void addCutOffLabels()
    {
        if (curves_.size() > mostLabelled)
            return;
        LabelPlaces room(style_.side);
        room.avoidLine({place(0, 0), place(1, 1)});
        std::vector<std::size_t> dotted; // from the top; one for all that have the same to say of the same dot
        for (std::size_t c = 0; c < curves_.size(); ++c) {
            room.avoidLine(rocLine(curves_[c]));
            if (!curves_[c].best || std::ranges::any_of(dotted, [&](std::size_t d) { return isSameDot(c, d); }))
                continue;
            room.avoidDot(dotOf(curves_[c]));
            dotted.push_back(c);
        }
        std::ranges::stable_sort(dotted, {}, [&](std::size_t c) { return dotOf(curves_[c]).y; });
        std::vector<std::optional<PlacedLabel>> labels;
        for (const auto& [word, farthest] : {std::pair{"cut-off ", 30.0}, std::pair{"", 160.0}}) {
            LabelPlaces places = room;
            labels.clear();
            for (const std::size_t c : dotted)
                labels.push_back(places.beside(dotOf(curves_[c]), word + curves_[c].cutOffText(), farthest));
            if (std::ranges::find(labels, false, &std::optional<PlacedLabel>::has_value) == labels.end())
                break;
        }
        for (std::size_t i = 0; i < dotted.size(); ++i)
            if (labels[i])
                addLabel(*labels[i], dotted[i]);
    }

    [[nodiscard]] bool isSameDot(std::size_t a, std::size_t b) const
    {
        const PathPoint dot = dotOf(curves_[a]);
        const PathPoint other = dotOf(curves_[b]);
        return dot.x == other.x && dot.y == other.y && curves_[a].cutOffText() == curves_[b].cutOffText();
    }

    void addPrevalenceLabels(const std::vector<PrevalenceLine>& lines)
    {
        if (lines.size() > mostLabelled)
            return;
        LabelPlaces places(style_.side);
        for (const DrawnCurve& curve : curves_)
            places.avoidLine(precisionRecallLine(curve));
        for (const PrevalenceLine& line : lines)
            places.avoidLine({place(0, line.prevalence), place(1, line.prevalence)});
        for (const auto& [prevalence, curve] : lines) {
            const std::string text = "prevalence " + readable(prevalence, CellRole::statistic);
            if (const auto label = places.along(place(0, prevalence).y, text))
                addLabel(*label, curve);
        }
    }

    const std::vector<DrawnCurve>& curves_;
    const PanelStyle& style_;
    std::string svg_;
};

} // namespace

std::vector<Panel> panelsOf(const Drawing& drawing, const PanelStyle& style)
{
    Painter painter(drawing, style);
    std::vector<Panel> panels{painter.roc()};
    if (drawing.hasPrecisionRecall())
        panels.push_back(painter.precisionRecall());
    return panels;
}

} // namespace vexroc
