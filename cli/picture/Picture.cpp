#include "cli/picture/Picture.h"

#include "cli/picture/LabelPlaces.h"
#include "cli/picture/Panels.h"
#include "cli/picture/markup.h"
#include "cli/picture/textLines.h"
#include "cli/words/Failure.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vexroc {

namespace {

using markup::pixels;

constexpr double margin = 12;
constexpr double lineHeight = 20; // of the legend and the notes
constexpr double columnGap = 20;
constexpr double sampleWidth = 60;

/// The legend before it has a place: rows below a heading, set as blocks beside each other where there is room. In a
/// narrow picture each curve has its name, and below it what the columns of its row would say.
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
        stacked = blockWidth - columnGap > width;
        if (stacked)
            return stack(width);
        const auto room = static_cast<std::size_t>(std::max(1.0, width / blockWidth));
        blocks = std::clamp<std::size_t>((curves + fewest - 1) / fewest, 1, room);
        perBlock = (curves + blocks - 1) / blocks;
    }
    void stack(double width)
    {
        constexpr std::array words{"area ", "cut-off ", "prevalence "};
        for (std::size_t row = 1; row < rows.size(); ++row) {
            std::vector<std::string> lines{within(rows[row].front(), width - sampleWidth, textSize)};
            for (std::size_t column = 1; column < rows[row].size(); ++column)
                if (!rows[row][column].empty())
                    lines.push_back(words[column - 1] + rows[row][column]);
            rows[row] = std::move(lines);
        }
    }
    [[nodiscard]] double height() const
    {
        if (!stacked)
            return static_cast<double>(perBlock + 1) * lineHeight;
        std::size_t lines = 0;
        for (std::size_t row = 1; row < rows.size(); ++row)
            lines += rows[row].size();
        return static_cast<double>(lines) * lineHeight;
    }

    std::vector<std::vector<std::string>> rows;
    std::vector<double> offsets; ///< of the columns in a block
    double blockWidth = sampleWidth;
    bool stacked = false;
    std::size_t blocks = 1;
    std::size_t perBlock = 0; ///< curves
};

class Picture {
public:
    Picture(const Drawing& drawing, const PictureStyle& style)
        : drawing_(drawing), style_(style), panelStyle_{.grey = style.grey, .titles = style.titles}, legend_(drawing),
          columns_(drawing.hasPrecisionRecall() ? 2 : 1), width_(ownWidth())
    {
        if (style.width > 0 && style.width < width_)
            becomeNarrow();
        else
            addNotes();
        for (const std::string& note : notes_)
            width_ = std::max(width_, style.width > 0 ? 0.0 : textWidth(note, smallTextSize) + 2 * margin);
        width_ = style.width > 0 ? width_ : std::ceil(width_);
        legend_.setIn(width_ - 2 * margin);
        fitHeight();
    }

    std::string svg()
    {
        const std::vector<Panel> panels = panelsOf(drawing_, panelStyle_);
        const double scale = style_.width > 0 ? style_.width / width_ : 1.0;
        svg_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + pixels(width_ * scale) + "\" height=\""
            + pixels(height_ * scale) + "\" viewBox=\"0 0 " + pixels(width_) + " " + pixels(height_)
            + "\" font-family=\"sans-serif\" xml:space=\"preserve\" role=\"img\" "
              "aria-labelledby=\"title description\">\n<title id=\"title\">"
            + panels.front().title.data() + (panels.size() > 1 ? "s and precision-recall curves" : "s")
            + "</title>\n<desc id=\"description\">" + description()
            + "</desc>\n<rect x=\"-1%\" y=\"-1%\" width=\"102%\" height=\"102%\" fill=\"#ffffff\"/>\n";
        for (std::size_t i = 0; i < panels.size(); ++i) {
            const double left = (width_ - columns_ * panelStyle_.width()) / 2
                + (columns_ > 1 ? static_cast<double>(i) * panelStyle_.width() : 0.0);
            const double top = columns_ > 1 ? 0.0 : static_cast<double>(i) * panelStyle_.height();
            svg_ +=
                "<g transform=\"translate(" + pixels(left) + " " + pixels(top) + ")\">\n" + panels[i].svg + "</g>\n";
        }
        legend_.stacked ? addStackedLegend() : addLegend();
        for (std::size_t i = 0; i < notes_.size(); ++i)
            addText(notes_[i], margin, noteTop() + static_cast<double>(i) * lineHeight, smallTextSize, "#505050");
        return std::move(svg_) + "</svg>\n";
    }

private:
    /// How wide the picture would be if nobody said.
    [[nodiscard]] double ownWidth() const
    {
        return std::max(columns_ * panelStyle_.width(), legend_.widthFor(drawing_.curves.size()) + 2 * margin);
    }

    /// As wide as it is to be, with text as large as ever: the axes become shorter, and panels stand below each other.
    void becomeNarrow()
    {
        constexpr double narrowestPanel = 300;
        width_ = style_.width;
        if (width_ / columns_ < narrowestPanel)
            columns_ = 1;
        panelStyle_.right = 16;
        const double others = panelStyle_.width() - panelStyle_.side;
        panelStyle_.side = std::min(panelStyle_.side, width_ / columns_ - others);
        addNotes();
        addNote("In brackets: " + drawing_.interval);
    }

    /// Shortens the axes until the picture is as high as it is to be.
    void fitHeight()
    {
        constexpr double shortest = 100; // axes
        height_ = noteTop() + static_cast<double>(notes_.size()) * lineHeight;
        if (!(style_.height > 0))
            return;
        const double wanted = style_.height * width_ / style_.width;
        const double tooMuch = std::max(height_ - wanted, 0.0) / panelRows();
        if (panelStyle_.side - tooMuch < shortest)
            throw usageError(
                "--plot-size is too low: at this width, legend and notes leave no room for the axes; "
                "give the width alone, or a height of at least "
                + pixels(std::ceil((height_ - panelRows() * (panelStyle_.side - shortest)) * style_.width / width_))
                + "px");
        panelStyle_.side -= tooMuch;
        height_ = wanted;
    }

    [[nodiscard]] double panelRows() const { return drawing_.hasPrecisionRecall() && columns_ == 1 ? 2 : 1; }
    [[nodiscard]] double legendTop() const { return panelRows() * panelStyle_.height(); }
    [[nodiscard]] double noteTop() const { return legendTop() + legend_.height() + 2 * margin; }

    void addNotes()
    {
        addNote(drawing_.question);
        for (const std::string& note : drawing_.notes)
            addNote(note);
    }

    void addNote(const std::string& text)
    {
        constexpr std::size_t longest = 200;
        const double room = width_ - 2 * margin;
        for (std::string& line : wrapped(bothEnds(text, longest), room, smallTextSize))
            notes_.push_back(style_.width > 0 ? within(line, room, smallTextSize) : std::move(line));
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

    void addSample(std::size_t curve, double left, double baseline)
    {
        const std::string y = pixels(baseline - 4.5);
        svg_ += "<g " + (style_.grey ? markup::greyOf(curve) : markup::colourOf(curve)) + "><line x1=\"" + pixels(left)
            + "\" x2=\"" + pixels(left + sampleWidth - 8) + "\" y1=\"" + y + "\" y2=\"" + y
            + "\" stroke=\"currentColor\" stroke-width=\"2\"" + markup::dashesOf(curve) + "/></g>\n";
    }

    void addStackedLegend()
    {
        double baseline = legendTop() + margin;
        for (std::size_t c = 0; c < drawing_.curves.size(); ++c) {
            addSample(c, margin, baseline);
            for (const std::string& line : legend_.rows[c + 1]) {
                addText(line, margin + sampleWidth, baseline, textSize, "#000000");
                baseline += lineHeight;
            }
        }
    }

    void addLegend()
    {
        for (std::size_t c = 0; c < drawing_.curves.size(); ++c) {
            const std::size_t block = c / legend_.perBlock;
            const std::size_t place = c % legend_.perBlock; // in the block
            const double left = margin + static_cast<double>(block) * legend_.blockWidth;
            const double baseline = legendTop() + static_cast<double>(place + 1) * lineHeight + margin;
            if (place == 0)
                addRow(0, left, baseline - lineHeight);
            addSample(c, left, baseline);
            addRow(c + 1, left, baseline);
        }
    }

    const Drawing& drawing_;
    const PictureStyle& style_;
    PanelStyle panelStyle_;
    Legend legend_;
    int columns_; ///< of panels
    std::vector<std::string> notes_;
    double width_;
    double height_ = 0;
    std::string svg_;
};

} // namespace

std::string svgPicture(const Drawing& drawing, const PictureStyle& style) { return Picture(drawing, style).svg(); }

} // namespace vexroc
