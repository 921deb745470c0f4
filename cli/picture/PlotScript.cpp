#include "cli/picture/PlotScript.h"

#include "cli/output/Table.h"
#include "cli/picture/PanelLabels.h"
#include "cli/words/Letters.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace vexroc {

namespace {

// Enhanced text is off: markup in a name is shown, not obeyed. A PNG has twice the pixels of a screen, to print well;
// the cairo terminals scale fonts and lines by themselves, PDF ones to a half of the others.
constexpr std::array pictureTypes{
    PictureType{".svg", "svg noenhanced rounded background '#ffffff'", 1.0, 1.0, "", false},
    PictureType{".pdf", "pdfcairo noenhanced rounded fontscale 0.75 linewidth 1.5 pointscale 1", 0.75, 1.0 / 96.0, "in",
                true},
    PictureType{".png", "pngcairo noenhanced rounded background '#ffffff' fontscale 2 linewidth 2 pointscale 2.6", 0.75,
                2.0, "", true},
};

// Okabe and Ito's colours, told apart by all kinds of colour vision; yellow, faint on white, comes last.
constexpr std::array colours{"#0072B2", "#D55E00", "#009E73", "#CC79A7", "#E69F00", "#56B4E9", "#000000", "#F0E442"};
constexpr std::size_t dashTypes = 5;

constexpr const char* grey = "#606060";
constexpr int left = 70; // of the axes in a panel
constexpr int panelWidth = left + panelSide + 30;
constexpr int top = 40;
constexpr int axisText = 76; // below a panel
constexpr int line = 20;     // of the legend and the caption
constexpr int margin = 12;
constexpr int columnGap = 20;
constexpr int sampleWidth = 60;

std::string number(double value) { return std::isfinite(value) ? shortest(value) : "NaN"; }

/// A text for gnuplot: in single quotes, because it runs what stands between backticks inside double ones. A single
/// quote of the text is joined from outside: doubled, gnuplot would take one at the beginning for an empty text.
std::string singleQuoted(std::string_view text)
{
    std::string literal = "'";
    for (const char c : text)
        c == '\'' ? literal += R"('."'".')" : literal += c;
    return literal + '\'';
}

std::string colourOf(std::size_t curve) { return std::string("lc rgb '") + colours[curve % colours.size()] + "'"; }

std::string lineOf(std::size_t curve, double width)
{
    return colourOf(curve) + " lw " + number(width) + " dt " + std::to_string(1 + curve / colours.size() % dashTypes);
}

/// Breaks text at blanks into lines that are no wider, where that can be.
std::vector<std::string> wrapped(const std::string& text, int width)
{
    std::vector<std::string> lines;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (!lines.empty() && textWidth(lines.back() + " " + word, smallTextSize) <= width)
            lines.back() += " " + word;
        else
            lines.push_back(word);
    }
    return lines;
}

/// The legend before it has a place: a table with a heading, one row per curve.
class Legend {
public:
    explicit Legend(const Drawing& drawing)
    {
        const bool prevalences = drawing.hasPrecisionRecall() && prevalenceLines(drawing.curves).size() > 1;
        rows_.push_back({"curve", drawing.areaHeading(), cutOffHeading});
        if (prevalences)
            rows_.back().emplace_back("prevalence");
        for (const DrawnCurve& curve : drawing.curves) {
            rows_.push_back({curve.legend, curve.areaText(), curve.cutOffText()});
            if (prevalences)
                rows_.back().push_back(readable(curve.prevalence(), CellRole::statistic));
        }
        for (std::size_t c = 0; c < rows_.front().size(); ++c) {
            double widest = 0.0;
            for (const auto& row : rows_)
                widest = std::max(widest, textWidth(row[c], textSize));
            offsets_.push_back(width_);
            width_ += static_cast<int>(widest) + columnGap;
        }
    }
    [[nodiscard]] const std::vector<std::vector<std::string>>& rows() const noexcept { return rows_; }
    [[nodiscard]] int offset(std::size_t column) const { return offsets_[column]; }
    [[nodiscard]] int width() const noexcept { return width_; }

private:
    std::vector<std::vector<std::string>> rows_;
    std::vector<int> offsets_; // of the columns
    int width_ = sampleWidth;
};

class Script {
public:
    Script(const PictureType& type, const Drawing& drawing)
        : type_(type), curves_(drawing.curves), legend_(drawing), hasPrecisionRecall_(drawing.hasPrecisionRecall())
    {
        width_ = std::max((hasPrecisionRecall_ ? 2 : 1) * panelWidth, legend_.width() + 2 * margin);
        addCaption(drawing.question);
        for (const std::string& note : drawing.notes)
            addCaption(note);
        for (const std::string& text : caption_)
            width_ = std::max(width_, static_cast<int>(textWidth(text, smallTextSize)) + 2 * margin);
        height_ = captionTop() + static_cast<int>(caption_.size()) * line;
    }

    std::string text()
    {
        addCanvas();
        for (std::size_t c = 0; c < curves_.size(); ++c)
            addData(c);
        addLegend();
        addRocPanel();
        if (hasPrecisionRecall_)
            addPrecisionRecallPanel();
        text_ += "unset multiplot\nset output\n";
        return std::move(text_);
    }

private:
    [[nodiscard]] static int legendTop() { return top + panelSide + axisText; }
    [[nodiscard]] int captionTop() const
    {
        return legendTop() + static_cast<int>(legend_.rows().size()) * line + margin;
    }
    [[nodiscard]] std::string screen(double x, double y) const
    {
        return "screen " + number(x / width_) + ", screen " + number(1.0 - y / height_);
    }
    [[nodiscard]] std::string font(int pixels) const { return "font 'sans," + number(pixels * type_.fontUnits) + "'"; }
    [[nodiscard]] std::string length(int pixels) const { return number(pixels * type_.sizeUnits) + type_.sizeUnitName; }

    void addCaption(const std::string& text)
    {
        constexpr std::size_t longest = 200;
        for (std::string& part : wrapped(bothEnds(text, longest), width_ - 2 * margin))
            caption_.push_back(std::move(part));
    }

    void addCanvas()
    {
        text_ += std::string("set encoding utf8\nset terminal ") + type_.terminal + " " + font(textSize) + " size "
            + length(width_) + "," + length(height_) + "\n";
        text_ += "set output 'picture'\nset multiplot\nunset key\n"
                 "set style textbox opaque noborder fc rgb '#ffffff' margins 0.3,0.1\n"
                 "set border lc rgb '#606060'\nset tics nomirror out scale 0.6\nset grid lc rgb '#e8e8e8' lt 1 lw 0.5\n"
                 "set xrange [0:1]\nset yrange [0:1]\nset xtics 0,0.2,1\nset ytics 0,0.2,1\nset format '%.1f'\n";
    }

    void addData(std::size_t c)
    {
        const std::string suffix = std::to_string(c);
        text_ += "$roc" + suffix + " << END\n";
        for (const CutOffPoint& point : curves_[c].roc)
            addPoint(1.0 - point.specificity, point.sensitivity);
        if (const auto& best = curves_[c].best) {
            text_ += "END\n$best" + suffix + " << END\n";
            addPoint(1.0 - best->specificity, best->sensitivity);
        }
        text_ += "END\n$pr" + suffix + " << END\n";
        for (const PrecisionRecallPoint& point : curves_[c].precisionRecall)
            addPoint(point.recall, point.precision);
        text_ += "END\n$measured" + suffix + " << END\n";
        addMeasured(curves_[c].precisionRecall);
        text_ += "END\n";
    }

    void addPoint(double x, double y) { text_ += number(x) + " " + number(y) + "\n"; }

    /// A blank line parts lines. A line of one point, which gnuplot would leave out, is drawn as a very short one.
    void addMeasured(const std::vector<PrecisionRecallPoint>& points)
    {
        constexpr double veryShort = 1e-4;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const auto& [precision, recall, measured] = points[i];
            if (!measured) {
                text_ += "\n";
                continue;
            }
            addPoint(recall, precision);
            const bool alone =
                (i == 0 || !points[i - 1].measured) && (i + 1 == points.size() || !points[i + 1].measured);
            if (alone)
                addPoint(recall > 0.5 ? recall - veryShort : recall + veryShort, precision);
        }
    }

    void addText(const std::string& text, double x, double y, int fontSize, const char* colour = "#000000")
    {
        text_ += "set label " + singleQuoted(text) + " at " + screen(x, y) + " left " + font(fontSize) + " tc rgb '"
            + colour + "'\n";
    }

    /// Below the panels: no curve lies under it. The lines and texts stand at places of the screen; the first panel
    /// draws them.
    void addLegend()
    {
        for (std::size_t row = 0; row < legend_.rows().size(); ++row) {
            const double y = legendTop() + (static_cast<double>(row) + 0.5) * line;
            const auto& cells = legend_.rows()[row];
            for (std::size_t column = 0; column < cells.size(); ++column)
                addText(cells[column], margin + legend_.offset(column), y, textSize, row == 0 ? grey : "#000000");
            if (row > 0)
                text_ += "set arrow from " + screen(margin, y) + " to " + screen(margin + sampleWidth - 8, y)
                    + " nohead " + lineOf(row - 1, 2.0) + "\n";
        }
        for (std::size_t i = 0; i < caption_.size(); ++i)
            addText(caption_[i], margin, captionTop() + (static_cast<double>(i) + 0.3) * line, smallTextSize, grey);
    }

    void addPanel(int panel, const char* title, const char* x, const char* y)
    {
        const double fromLeft = panel * panelWidth + left;
        text_ += "set lmargin at screen " + number(fromLeft / width_) + "\nset rmargin at screen "
            + number((fromLeft + panelSide) / width_) + "\nset tmargin at screen " + number(1.0 - double(top) / height_)
            + "\nset bmargin at screen " + number(1.0 - double(top + panelSide) / height_) + "\nset title '" + title
            + "'\nset xlabel '" + x + "'\nset ylabel '" + y + "'\n";
    }

    void addLabels(const std::vector<PanelLabel>& labels)
    {
        for (const PanelLabel& label : labels)
            text_ += "set label " + singleQuoted(label.text) + " at " + number(label.x) + "," + number(label.y)
                + " left front boxed " + font(smallTextSize) + " tc rgb '"
                + (label.curve ? colours[*label.curve % colours.size()] : grey) + "'\n";
    }

    void addRocPanel()
    {
        addPanel(0, "ROC curve", "1 - specificity", "sensitivity");
        addLabels(cutOffLabels(curves_));
        text_ += std::string("plot x with lines lw 1 dt 2 lc rgb '") + grey + "' notitle";
        for (std::size_t c = 0; c < curves_.size(); ++c)
            addPlot("$roc", c, "with lines " + lineOf(c, 2.0));
        for (std::size_t c = 0; c < curves_.size(); ++c) {
            if (!curves_[c].best)
                continue;
            addPlot("$best", c, "with points pt 7 ps 1.0 lc rgb '#ffffff'");
            addPlot("$best", c, "with points pt 7 ps 0.8 " + colourOf(c));
        }
        text_ += "\nunset label\nunset arrow\n";
    }

    void addPrecisionRecallPanel()
    {
        addPanel(1, "Precision-recall curve", "recall", "precision");
        const std::vector<PrevalenceLine> lines = prevalenceLines(curves_);
        addLabels(prevalenceLabels(lines));
        text_ += "plot NaN notitle";
        for (const auto& [prevalence, curve] : lines)
            text_ += ", \\\n  " + number(prevalence) + " with lines lw 1 dt 2 "
                + (curve ? colourOf(*curve) : std::string("lc rgb '") + grey + "'") + " notitle";
        const bool dashed = curves_.size() > colours.size(); // dashes and parts of two widths do not go together
        for (std::size_t c = 0; c < curves_.size(); ++c) {
            addPlot("$pr", c, "with lines " + lineOf(c, dashed ? 1.5 : 1.2));
            if (!dashed)
                addPlot("$measured", c, "with lines " + lineOf(c, 2.0));
        }
        text_ += "\n";
    }

    void addPlot(const char* data, std::size_t c, const std::string& style)
    {
        text_ += std::string(", \\\n  ") + data + std::to_string(c) + " using 1:2 " + style + " notitle";
    }

    const PictureType& type_;
    const std::vector<DrawnCurve>& curves_;
    Legend legend_;
    bool hasPrecisionRecall_;
    std::vector<std::string> caption_;
    int width_;
    int height_;
    std::string text_;
};

} // namespace

const PictureType* pictureType(std::string_view file)
{
    const auto* const type =
        std::ranges::find_if(pictureTypes, [&](const PictureType& t) { return endsWithIgnoringCase(file, t.ending); });
    return type == pictureTypes.end() ? nullptr : type;
}

std::string plotScript(const PictureType& type, const Drawing& drawing) { return Script(type, drawing).text(); }

} // namespace vexroc
