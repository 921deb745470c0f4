#include "cli/output/TableForms.h"
#include "cli/output/TableLayout.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace vexroc {

namespace {

/// Visible text in so many places, fewer than it takes: both its ends, with the mark between them.
std::string shortened(std::string_view text, std::size_t places, std::string_view mark)
{
    std::vector<std::string_view> characters;
    for (std::string_view rest = text; !rest.empty(); rest.remove_prefix(characters.back().size()))
        characters.push_back(rest.substr(0, firstCharacter(rest).length));
    std::size_t room = places - std::min(places, displayWidth(mark));
    const std::size_t roomBehind = room / 2;
    std::string front;
    for (std::size_t i = 0; i < characters.size() && displayWidth(characters[i]) + roomBehind <= room; ++i) {
        front += characters[i];
        room -= displayWidth(characters[i]);
    }
    std::size_t back = text.size();
    for (auto last = characters.rbegin(); last != characters.rend() && displayWidth(*last) <= room; ++last) {
        back -= last->size();
        room -= displayWidth(*last);
    }
    return front.append(mark).append(text.substr(back));
}

/// Names of a column, shortened so that different names stay different: those that would look alike get a number.
class ShortNames {
public:
    const std::string& of(std::string_view name, std::size_t places)
    {
        const auto known = shortOf_.find(name);
        if (known != shortOf_.end())
            return known->second;
        std::string text = shortened(name, places, "…");
        for (int number = 2; !taken_.insert(text).second; ++number)
            text = shortened(name, places, "…" + std::to_string(number) + "…");
        return shortOf_.emplace(name, std::move(text)).first->second;
    }

private:
    std::map<std::string, std::string, std::less<>> shortOf_;
    std::set<std::string> taken_;
};

/// A layout in aligned columns.
class TextTable {
public:
    TextTable(const Table& table, std::size_t width) : layout_(table, width), shortNames_(layout_.columns()) {}

    void write(std::string& out)
    {
        const char* separator = "";
        for (const TableLayout::Places& panel : layout_.panels()) {
            out += std::exchange(separator, "\n");
            for (std::size_t line = 0; line < layout_.lines(); ++line)
                writeLine(line, panel, out);
        }
    }

private:
    void writeLine(std::size_t line, const TableLayout::Places& panel, std::string& out)
    {
        for (const std::size_t place : panel)
            writeCell(place, layout_.cell(line, place), out);
        out.erase(out.find_last_not_of(' ') + 1);
        out += '\n';
    }

    void writeCell(std::size_t place, std::string_view cell, std::string& out)
    {
        const std::size_t width = layout_.width(place);
        if (displayWidth(cell) > width)
            cell = shortNames_[place].of(cell, width);
        const bool left = layout_.isName(place);
        const std::size_t padding = width - displayWidth(cell);
        out.append(place == 0 ? 0 : TableLayout::between, ' ').append(left ? 0 : padding, ' ').append(cell);
        out.append(left ? padding : 0, ' ');
    }

    TableLayout layout_;
    std::vector<ShortNames> shortNames_;
};

} // namespace

void writeText(const Table& table, std::size_t width, std::string& out) { TextTable(table, width).write(out); }

} // namespace vexroc
