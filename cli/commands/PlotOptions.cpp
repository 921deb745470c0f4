#include "cli/commands/PlotOptions.h"

#include "cli/commands/Report.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <array>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace vexroc {

namespace {

constexpr double perInch = 96.0; // pixels

struct Unit {
    std::string_view name;
    double pixels;
};
constexpr std::array units{Unit{"mm", perInch / 25.4}, Unit{"cm", perInch / 2.54}, Unit{"in", perInch},
                           Unit{"px", 1.0}};

struct Length {
    double number = 0;
    const Unit* unit = nullptr; ///< null: not said
    [[nodiscard]] double pixels() const { return number * unit->pixels; }
};

/// The length that the text starts with; text then starts behind it.
std::optional<Length> takeLength(std::string_view& text)
{
    Length length;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length.number);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    for (const Unit& unit : units)
        if (text.starts_with(unit.name)) {
            length.unit = &unit;
            text.remove_prefix(unit.name.size());
            break;
        }
    return length;
}

bool isPossible(const Length& length)
{
    constexpr double smallest = 60 * perInch / 25.4;
    constexpr double largest = 20000;
    return length.pixels() >= smallest - 1e-9 && length.pixels() <= largest;
}

/// Such as 85mm, 900px or 6inx4in, with the resolution that goes with the unit: pixels are dots, lengths are printed
/// with 300 dots to an inch.
void setPlotSize(const std::string& text, PictureStyle& style)
{
    if (text.empty())
        return;
    const Failure wrong = usageError("--plot-size " + inQuotes(text)
                                     + ": expected a width, or width and height, in mm, cm, in or px, such as 85mm or "
                                       "6inx4in; from 60mm to 20000px");
    std::string_view rest = text;
    std::optional<Length> width = takeLength(rest);
    std::optional<Length> height;
    if (width && rest.starts_with('x')) {
        rest.remove_prefix(1);
        height = takeLength(rest);
        if (!height || !height->unit)
            throw wrong;
        if (!width->unit)
            width->unit = height->unit;
    }
    if (!width || !width->unit || !rest.empty() || !isPossible(*width) || (height && !isPossible(*height)))
        throw wrong;
    constexpr double printed = 300.0 / perInch;
    style.width = width->pixels();
    style.height = height ? height->pixels() : 0;
    style.resolution = width->unit->name == "px" ? 1.0 : printed;
}

} // namespace

void addPlotOptions(CLI::App& command, PlotOptions& options, const std::string& whatItDoes)
{
    command.add_option("--plot", options.file, whatItDoes + " into this file: .svg, .pdf or .png")->type_name("FILE");
    command
        .add_option("--plot-size", options.size,
                    "Size of the picture of --plot: its width, or width and height, such as 85mm or 6inx4in")
        ->type_name("WIDTH[xHEIGHT]");
    command.add_flag("--grey", options.grey, "The picture of --plot without colour");
    command.add_flag("--no-title", options.noTitle, "The picture of --plot without titles");
}

PlannedPicture::PlannedPicture(const PlotOptions& options)
    : file_(options.file), style_{.grey = options.grey, .titles = !options.noTitle}
{
    if (file_.empty() && (options.grey || options.noTitle || !options.size.empty()))
        throw usageError("--plot-size, --grey and --no-title say how the picture of --plot FILE looks: name it");
    setPlotSize(options.size, style_);
    if (!file_.empty())
        rasterizer_.emplace("--plot", file_);
}

std::string PlannedPicture::bytesOf(std::string svg) const
{
    return rasterizer_->convert(std::move(svg), style_.resolution);
}

void PlannedPicture::addTo(Report& report, std::string svg) const
{
    report.files.push_back({file_, bytesOf(std::move(svg))});
}

} // namespace vexroc
