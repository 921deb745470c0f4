#include "cli/picture/Picture.h"

#include "cli/picture/LabelPlaces.h"
#include "cli/picture/Panels.h"
#include "cli/picture/markup.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace vexroc {

namespace {

using markup::pixels;

constexpr double margin = 12;
constexpr double lineHeight = 20; // of the legend and the notes
constexpr double columnGap = 20;
constexpr double sampleWidth = 60;

/// Breaks text at blanks into lines that are no wider, where that can be.
std::vector<std::string> wrapped(const std::string& text, double width)
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

/// The legend before it has a place: rows below a heading, set as blocks beside each other where there is room.
struct Legend {
    explicit Legend(const Drawing& drawing) : rows(drawing.legend())
    {
        for (std::size_t column = 0; column < rows.front().size(); ++column) {
            double widest = 0.0;
            for (const auto& row : rows)
                widest = std::max(widest, textWidth(row[column], textSize));
            offsets.push_back(blockWidth);
            blockWidth += widest + columnGap;
        }
    }
    /// With many curves, one block would make a tower of the picture.
    [[nodiscard]] double widthFor(std::size_t curves) const
    {
        constexpr std::size_t many = 30;
        constexpr double shortNames = 700;
        return curves > many && blockWidth <= shortNames ? 2 * blockWidth : blockWidth;
    }
    void setIn(double width)
    {
        constexpr std::size_t fewest = 12; // curves in one block
        const std::size_t curves = rows.size() - 1;
        const auto room = static_cast<std::size_t>(std::max(1.0, width / blockWidth));
        blocks = std::clamp<std::size_t>((curves + fewest - 1) / fewest, 1, room);
        perBlock = (curves + blocks - 1) / blocks;
    }

    std::vector<std::vector<std::string>> rows;
    std::vector<double> offsets; ///< of the columns in a block
    double blockWidth = sampleWidth;
    std::size_t blocks = 1;
    std::size_t perBlock = 0; ///< curves
};

class Picture {
public:
    explicit Picture(const Drawing& drawing)
        : drawing_(drawing), panels_(panelsOf(drawing, PanelUse::seen)), legend_(drawing)
    {
        width_ = std::max(double(panels_.size()) * panelWidth, legend_.widthFor(drawing.curves.size()) + 2 * margin);
        addNote(drawing.question);
        for (const std::string& note : drawing.notes)
            addNote(note);
        for (const std::string& note : notes_)
            width_ = std::max(width_, textWidth(note, smallTextSize) + 2 * margin);
        width_ = std::ceil(width_);
        legend_.setIn(width_ - 2 * margin);
        height_ = noteTop() + static_cast<double>(notes_.size()) * lineHeight;
    }

    std::string svg()
    {
        const std::string size = pixels(width_) + " " + pixels(height_);
        svg_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + pixels(width_) + "\" height=\"" + pixels(height_)
            + "\" viewBox=\"0 0 " + size
            + "\" font-family=\"sans-serif\" xml:space=\"preserve\" role=\"img\" "
              "aria-labelledby=\"title description\">\n<title id=\"title\">"
            + panels_.front().title.data() + (panels_.size() > 1 ? "s and precision-recall curves" : "s")
            + "</title>\n<desc id=\"description\">" + description()
            + "</desc>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
        double left = (width_ - static_cast<double>(panels_.size()) * panelWidth) / 2;
        for (const Panel& panel : panels_) {
            svg_ += "<g transform=\"translate(" + pixels(left) + " 0)\">\n" + panel.svg + "</g>\n";
            left += panelWidth;
        }
        addLegend();
        for (std::size_t i = 0; i < notes_.size(); ++i)
            addText(notes_[i], margin, noteTop() + static_cast<double>(i) * lineHeight, smallTextSize, "#505050");
        return std::move(svg_) + "</svg>\n";
    }

private:
    [[nodiscard]] double noteTop() const
    {
        return panelHeight + static_cast<double>(legend_.perBlock + 1) * lineHeight + 2 * margin;
    }

    void addNote(const std::string& text)
    {
        constexpr std::size_t longest = 200;
        for (std::string& line : wrapped(bothEnds(text, longest), width_ - 2 * margin))
            notes_.push_back(std::move(line));
    }

    /// For those who do not see the picture.
    [[nodiscard]] std::string description() const
    {
        std::string text = drawing_.question + ".";
        for (const DrawnCurve& curve : drawing_.curves)
            text += " " + curve.legend + ": area " + curve.areaText() + ".";
        return markup::text(text);
    }

    void addText(const std::string& text, double x, double y, int size, const char* colour)
    {
        svg_ += "<text x=\"" + pixels(x) + "\" y=\"" + pixels(y) + "\" font-size=\"" + std::to_string(size)
            + "\" fill=\"" + colour + "\">" + markup::text(text) + "</text>\n";
    }

    void addRow(std::size_t row, double left, double baseline)
    {
        for (std::size_t column = 0; column < legend_.rows[row].size(); ++column)
            addText(legend_.rows[row][column], left + legend_.offsets[column], baseline, textSize,
                    row == 0 ? "#505050" : "#000000");
    }

    void addLegend()
    {
        for (std::size_t c = 0; c < drawing_.curves.size(); ++c) {
            const std::size_t block = c / legend_.perBlock;
            const std::size_t place = c % legend_.perBlock; // in the block
            const double left = margin + static_cast<double>(block) * legend_.blockWidth;
            const double baseline = panelHeight + static_cast<double>(place + 1) * lineHeight + margin;
            if (place == 0)
                addRow(0, left, baseline - lineHeight);
            const std::string y = pixels(baseline - 4.5);
            svg_ += "<g " + markup::colourOf(c) + "><line x1=\"" + pixels(left) + "\" x2=\""
                + pixels(left + sampleWidth - 8) + "\" y1=\"" + y + "\" y2=\"" + y
                + "\" stroke=\"currentColor\" stroke-width=\"2\"" + markup::dashesOf(c) + "/></g>\n";
            addRow(c + 1, left, baseline);
        }
    }

    const Drawing& drawing_;
    std::vector<Panel> panels_;
    Legend legend_;
    std::vector<std::string> notes_;
    double width_;
    double height_;
    std::string svg_;
};

} // namespace

std::string svgPicture(const Drawing& drawing) { return Picture(drawing).svg(); }

} // namespace vexroc
