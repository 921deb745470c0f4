#include "cli/picture/Plot.h"

#include "cli/Failure.h"
#include "cli/output/Table.h"
#include "cli/run/ChildProcess.h"
#include "cli/text/Words.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <sstream>

namespace vexroc {

namespace {

struct FileType {
    std::string_view ending;
    const char* terminal;
};

// Enhanced text is off: markup in a name is shown, not obeyed.
constexpr std::array fileTypes{
    FileType{".svg", "svg noenhanced background '#ffffff'"},
    FileType{".pdf", "pdfcairo noenhanced"},
    FileType{".png", "pngcairo noenhanced background '#ffffff'"},
};

// Okabe and Ito's colours, told apart by all kinds of colour vision; yellow, faint on white, comes last.
constexpr std::array colours{"#0072B2", "#D55E00", "#009E73", "#CC79A7", "#E69F00", "#56B4E9", "#000000", "#F0E442"};

// Places are in pixels; a PDF is set in the same proportions.
constexpr int side = 440; // of a panel
constexpr int left = 70;
constexpr int panelWidth = left + side + 30;
constexpr int top = 40;
constexpr int axisText = 70; // below a panel
constexpr int legendLine = 20;

std::string number(double value)
{
    return std::isfinite(value) ? shortest(value) : "NaN";
}

/// A text for gnuplot: in single quotes, because it runs what stands between backticks inside double ones. A single
/// quote of the text is joined from outside: doubled, gnuplot would take one at the beginning for an empty text.
std::string singleQuoted(std::string_view text)
{
    std::string literal = "'";
    for (const char c : text)
        c == '\'' ? literal += R"('."'".')" : literal += c;
    return literal + '\'';
}

/// The legend keeps within its line: area and interval stay, a long name loses its end.
std::string legendOf(const DrawnCurve& curve, bool withCutOff, std::size_t most)
{
    DrawnCurve shortened{curve};
    shortened.name.clear();
    const std::size_t room = most - std::min(most, displayWidth(shortened.legend(withCutOff)) + 1);
    if (displayWidth(curve.name) <= room)
        return curve.legend(withCutOff);
    std::size_t characters = 0;
    for (const char c : curve.name) {
        characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
        if (characters > room)
            break;
        shortened.name += c;
    }
    shortened.name += "…";
    return shortened.legend(withCutOff);
}

class Script {
public:
    Script(std::string_view terminal, const std::vector<DrawnCurve>& curves) : curves_(curves)
    {
        const bool precisionRecall = std::ranges::any_of(
            curves, [](const DrawnCurve& curve) { return !curve.precisionRecall.empty(); });
        panels_ = precisionRecall ? 2 : 1;
        width_ = panels_ * panelWidth;
        height_ = top + side + axisText + legendLine * (static_cast<int>(curves.size()) + 1);
        addCanvas(terminal);
        for (std::size_t c = 0; c < curves.size(); ++c)
            addData(c);
        addRocPanel();
        if (precisionRecall)
            addPrecisionRecallPanel();
        text_ += "unset multiplot\nset output\n";
    }
    [[nodiscard]] std::string take() { return std::move(text_); }

private:
    void addCanvas(std::string_view terminal)
    {
        const bool inInches = terminal.starts_with("pdf");
        constexpr double pixelsPerInch = 96.0;
        const double unit = inInches ? 1.0 / pixelsPerInch : 1.0;
        text_.append("set encoding utf8\nset terminal ").append(terminal);
        text_ += " font 'sans,11' size " + number(width_ * unit) + (inInches ? "in" : "") + ","
            + number(height_ * unit) + (inInches ? "in" : "") + "\n";
        text_ += "set output 'picture'\nset multiplot\n"
                 "set border lc rgb '#606060'\nset tics nomirror out scale 0.6\nset grid lc rgb '#e8e8e8' lt 1 lw 0.5\n"
                 "set xrange [0:1]\nset yrange [0:1]\nset xtics 0,0.2,1\nset ytics 0,0.2,1\nset format '%.1f'\n";
        const std::string note = thinningNote(curves_);
        if (!note.empty())
            text_ += "set label " + singleQuoted("Thinned: " + note) + " at screen " + number(10.0 / width_)
                + ",0.015 font 'sans,8' tc rgb '#606060'\n";
    }

    void addData(std::size_t c)
    {
        const std::string suffix = std::to_string(c);
        text_ += "$roc" + suffix + " << END\n";
        for (const CutOffPoint& point : curves_[c].roc)
            text_ += number(1.0 - point.specificity) + " " + number(point.sensitivity) + "\n";
        text_ += "END\n$pr" + suffix + " << END\n";
        for (const PrecisionRecallPoint& point : curves_[c].precisionRecall)
            text_ += number(point.recall) + " " + number(point.precision) + "\n";
        text_ += "END\n$measured" + suffix + " << END\n";
        for (const PrecisionRecallPoint& point : curves_[c].precisionRecall)
            text_ += point.interpolated ? "\n" : number(point.recall) + " " + number(point.precision) + "\n";
        text_ += "END\n";
    }

    void addPanel(int panel, const char* title, const char* x, const char* y)
    {
        const double fromLeft = panel * panelWidth + left;
        text_ += "set lmargin at screen " + number(fromLeft / width_) + "\nset rmargin at screen "
            + number((fromLeft + side) / width_) + "\nset tmargin at screen " + number(1.0 - double(top) / height_)
            + "\nset bmargin at screen " + number(1.0 - double(top + side) / height_) + "\nset title '" + title
            + "'\nset xlabel '" + x + "'\nset ylabel '" + y + "'\n";
    }

    /// Legends stand below the first panel, however many there are: no curve lies under them.
    void addLegendPlace()
    {
        text_ += "set key at screen " + number((left - 10.0) / width_) + ", screen "
            + number(1.0 - double(top + side + axisText - 5) / height_)
            + " left top vertical maxcols 1 Left reverse samplen 2 spacing 1.25 width 0\n";
    }

    static std::string lineOf(std::size_t c, double width)
    {
        return std::string(" lc rgb '") + colours[c % colours.size()] + "' lw " + number(width) + " dt "
            + std::to_string(1 + c / colours.size());
    }

    void addRocPanel()
    {
        addPanel(0, "ROC curve", "1 - specificity", "sensitivity");
        addLegendPlace();
        const bool labelled = curves_.size() <= mostCutOffLabels;
        if (labelled)
            addCutOffLabels();
        const std::size_t legendRoom = panels_ == 2 ? 110 : 64;
        text_ += "plot x with lines lc rgb '#909090' lw 1 dt 2 notitle";
        for (std::size_t c = 0; c < curves_.size(); ++c)
            text_ += ", \\\n  $roc" + std::to_string(c) + " using 1:2 with lines" + lineOf(c, 2.0) + " title "
                + singleQuoted(legendOf(curves_[c], !labelled, legendRoom));
        for (std::size_t c = 0; c < curves_.size(); ++c)
            if (const auto& best = curves_[c].best)
                text_ += ", \\\n  '+' using (" + number(1.0 - best->specificity) + "):(" + number(best->sensitivity)
                    + ") every ::0::0 with points pt 7 ps 0.8 lc rgb '" + colours[c % colours.size()] + "' notitle";
        text_ += "\nunset label\n";
    }

    /// Each beside its dot, below the curve; moved down where it would cover another.
    void addCutOffLabels()
    {
        struct Label {
            double x, y;
            std::size_t curve;
        };
        std::vector<Label> labels;
        for (std::size_t c = 0; c < curves_.size(); ++c)
            if (const auto& best = curves_[c].best)
                labels.push_back({1.0 - best->specificity + 0.02, best->sensitivity - 0.025, c});
        std::ranges::sort(labels, std::ranges::greater{}, &Label::y);
        constexpr double lineHeight = 0.038;
        constexpr double labelWidth = 0.16;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            for (std::size_t before = 0; before < i; ++before)
                if (std::fabs(labels[i].x - labels[before].x) < labelWidth)
                    labels[i].y = std::min(labels[i].y, labels[before].y - lineHeight);
            const std::size_t c = labels[i].curve;
            text_ += "set label '" + readable(curves_[c].best->cutOff, CellRole::measure) + "' at "
                + number(labels[i].x) + "," + number(labels[i].y) + " left font 'sans,9' tc rgb '"
                + colours[c % colours.size()] + "' front\n";
        }
    }

    void addPrecisionRecallPanel()
    {
        addPanel(1, "Precision-recall curve", "recall", "precision");
        text_ += "unset key\n";
        const bool onePrevalence = std::ranges::all_of(curves_, [this](const DrawnCurve& curve) {
            return curve.prevalence() == curves_.front().prevalence();
        });
        std::string plots;
        const auto add = [&](const std::string& plot) { plots += (plots.empty() ? "" : ", \\\n  ") + plot; };
        for (std::size_t c = 0; c < curves_.size(); ++c) {
            const std::string suffix = std::to_string(c);
            if (c == 0 || !onePrevalence)
                add(number(curves_[c].prevalence()) + " with lines lw 1 dt 2 lc rgb '"
                    + (onePrevalence ? "#909090" : colours[c % colours.size()]) + "' notitle");
            add("$pr" + suffix + " using 1:2 with lines" + lineOf(c, 0.7) + " notitle");
            add("$measured" + suffix + " using 1:2 with lines" + lineOf(c, 2.0) + " notitle");
        }
        if (onePrevalence && !curves_.empty())
            text_ += "set label 'prevalence " + readable(curves_.front().prevalence(), CellRole::statistic)
                + "' at 0.02," + number(curves_.front().prevalence() - 0.025) + " font 'sans,9' tc rgb '#606060'\n";
        text_ += "plot " + plots + "\n";
    }

    const std::vector<DrawnCurve>& curves_;
    int panels_;
    int width_;
    int height_;
    std::string text_;
};

/// Where gnuplot says what is wrong, behind the command that it shows first.
std::string lastLine(const std::string& text)
{
    std::istringstream lines(text);
    std::string last;
    for (std::string line; std::getline(lines, line);)
        if (!trimmed(line).empty())
            last = line;
    return last;
}

} // namespace

Plot::Plot(const std::string& file)
{
    const auto type = std::ranges::find_if(fileTypes, [&](const FileType& t) { return file.ends_with(t.ending); });
    if (type == fileTypes.end())
        throw usageError("--plot " + inQuotes(file) + ": expected a name that ends in .svg, .pdf or .png");
    terminal_ = type->terminal;
    const std::optional<std::string> program = findProgram("gnuplot");
    if (!program)
        throw outputError("--plot needs the program gnuplot, which is not on the PATH; on Debian: apt install "
                          "gnuplot-nox");
    gnuplot_ = *program;
}

std::string Plot::draw(const std::vector<DrawnCurve>& curves, VexCommon_920::CancelFlag& cancel) const
{
    constexpr std::chrono::seconds limit{60};
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "script", std::ios::binary) << plotScript(terminal_, curves);
    const ChildEnd end = runChild(gnuplot_, {"gnuplot", "--default-settings", "script"}, folder.path(), limit, cancel);
    if (cancel.IsCancelRequested())
        throw cancelled();
    if (!end.inTime)
        throw outputError("gnuplot did not finish the picture within " + std::to_string(limit.count()) + " seconds");
    std::ifstream file(folder.path() / "picture", std::ios::binary);
    std::string picture(std::istreambuf_iterator<char>(file), {});
    if (end.status != 0 || picture.empty())
        throw outputError("gnuplot could not draw the picture: " + visible(lastLine(end.said)));
    return picture;
}

std::string plotScript(std::string_view terminal, const std::vector<DrawnCurve>& curves)
{
    return Script(terminal, curves).take();
}

} // namespace vexroc
