#include "cli/picture/Plot.h"

#include "cli/picture/Glyphs.h"
#include "cli/system/ChildProcess.h"
#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <sys/wait.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace vexroc {

namespace {

/// Where gnuplot says what is wrong, behind the command that it shows first; how it ended where it says nothing.
std::string whyItFailed(const ChildEnd& end)
{
    std::istringstream lines(end.said);
    std::string last;
    for (std::string line; std::getline(lines, line);)
        if (!trimmed(line).empty())
            last = line;
    if (!last.empty())
        return visible(last);
    if (WIFSIGNALED(end.status))
        return "it was ended by signal " + std::to_string(WTERMSIG(end.status));
    return "it ended with exit status " + std::to_string(WEXITSTATUS(end.status)) + " and no message";
}

/// Hands over to `draw` what the fonts of this machine can show of a drawing.
std::string withGlyphs(const Drawing& drawing, const Glyphs& glyphs, auto draw)
{
    std::vector<DrawnCurve> curves = drawing.curves;
    for (DrawnCurve& curve : curves)
        curve.legend = glyphs.shown(curve.legend);
    return draw(Drawing{
        .curves = curves, .level = drawing.level, .question = glyphs.shown(drawing.question), .notes = drawing.notes});
}

} // namespace

Plot::Plot(const std::string& file) : type_(pictureType(file))
{
    if (!type_)
        throw usageError("--plot " + inQuotes(file) + ": expected a name that ends in .svg, .pdf or .png");
    const std::optional<std::string> program = findProgram("gnuplot");
    if (!program)
        throw outputError("--plot needs the program gnuplot, which is not on the PATH; on Debian: apt install "
                          "gnuplot-nox");
    gnuplot_ = *program;
}

std::string Plot::draw(const Drawing& drawing, VexCommon_920::CancelFlag& cancel) const
{
    constexpr std::chrono::seconds limit{60};
    const TemporaryFolder folder;
    const auto script = [this](const Drawing& shown) { return plotScript(*type_, shown); };
    std::ofstream(folder.path() / "script", std::ios::binary)
        << (type_->needsGlyphs ? withGlyphs(drawing, Glyphs::installed(cancel), script) : script(drawing));
    const ChildEnd end = runChild(gnuplot_, {"gnuplot", "--default-settings", "script"}, folder.path(), limit, cancel);
    if (cancel.IsCancelRequested())
        throw cancelled();
    if (!end.inTime)
        throw outputError("gnuplot did not finish the picture within " + std::to_string(limit.count()) + " seconds");
    std::ifstream file(folder.path() / "picture", std::ios::binary);
    std::string picture(std::istreambuf_iterator<char>(file), {});
    if (end.status != 0 || picture.empty())
        throw outputError("gnuplot could not draw the picture: " + whyItFailed(end));
    return picture;
}

} // namespace vexroc
