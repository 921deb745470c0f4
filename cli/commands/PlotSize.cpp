#include "cli/commands/PlotSize.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <array>
#include <charconv>
#include <optional>
#include <string_view>

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

} // namespace

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

} // namespace vexroc
