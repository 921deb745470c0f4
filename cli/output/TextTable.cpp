#include "cli/output/TableForms.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <map>
#include <set>

namespace vexroc {

namespace {

constexpr std::size_t between = 2; // places between columns
constexpr std::size_t fewest = 8;  // places that a long name keeps
constexpr std::size_t plenty = 12; // places that it keeps where only the number of panels is at stake

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

/// A table for people: spelled once, then set as wide as its widest cells, in as few panels as the width allows. The
/// names that lead the rows stand in each panel.
class TextTable {
public:
    TextTable(const Table& table, std::size_t width) : table_(table), width_(width)
    {
        for (std::size_t c = 0; c < table.columns().size(); ++c)
            if (isShown(c))
                shown_.push_back(c);
        while (leading_ < shown_.size() && isName(leading_))
            ++leading_;
        spell();
        fitNames();
    }

    void write(std::string& out)
    {
        for (std::size_t p = 0; p < panels_.size(); ++p) {
            out.append(p == 0 ? 0 : 1, '\n');
            for (std::size_t row = 0; row <= table_.rows(); ++row)
                writeRow(row, panels_[p], out);
        }
    }

private:
    using Places = std::vector<std::size_t>; ///< of columns among those shown

    [[nodiscard]] const TableColumn& column(std::size_t place) const { return table_.columns()[shown_[place]]; }
    [[nodiscard]] bool isName(std::size_t place) const { return column(place).role == CellRole::name; }
    /// What a column takes in a panel, with what parts it from the one before.
    [[nodiscard]] std::size_t taken(std::size_t place) const { return widths_[place] + between; }

    [[nodiscard]] bool isShown(std::size_t column) const
    {
        const auto isZero = [&](std::size_t row) {
            const Table::Value value = table_.at(row, column);
            const auto* const number = std::get_if<double>(&value);
            return number && *number == 0.0;
        };
        if (table_.columns()[column].title.empty())
            return false;
        std::size_t row = 0;
        while (table_.columns()[column].unlessZero && row < table_.rows() && isZero(row))
            ++row;
        return !table_.columns()[column].unlessZero || row < table_.rows();
    }

    void spell()
    {
        widths_.resize(shown_.size());
        for (std::size_t place = 0; place < shown_.size(); ++place)
            add(place, std::string(column(place).title));
        for (std::size_t row = 0; row < table_.rows(); ++row)
            for (std::size_t place = 0; place < shown_.size(); ++place)
                add(place, forPeople(table_.at(row, shown_[place]), column(place).role));
    }

    void add(std::size_t place, const std::string& cell)
    {
        widths_[place] = std::max(widths_[place], displayWidth(cell));
        text_ += cell;
        ends_.push_back(text_.size());
    }

    /// Gives the leading names as many places as leave two fifths of the width to the others; fewer, but plenty, where
    /// that saves panels.
    void fitNames()
    {
        shortNames_.resize(shown_.size());
        const std::vector<std::size_t> wanted = widths_;
        std::size_t room = leading_ == shown_.size() ? width_ : width_ * 3 / 5;
        room -= std::min(room, leading_ * between);
        std::size_t longest = std::max(room, fewest);
        while (longest > fewest && namesWithin(longest, wanted) > room)
            --longest;
        std::size_t best = longest;
        std::size_t fewestPanels = makePanels(longest, wanted);
        for (; longest > plenty && fewestPanels > 1; --longest)
            if (const std::size_t panels = makePanels(longest - 1, wanted); panels < fewestPanels) {
                best = longest - 1;
                fewestPanels = panels;
            }
        makePanels(best, wanted);
    }

    /// The places of the leading names together, none longer than that.
    [[nodiscard]] std::size_t namesWithin(std::size_t longest, const std::vector<std::size_t>& wanted) const
    {
        std::size_t sum = 0;
        for (std::size_t place = 0; place < leading_; ++place)
            sum += std::min(wanted[place], longest);
        return sum;
    }

    /// Sets the columns in panels, with leading names no longer than that; says how many panels these are.
    std::size_t makePanels(std::size_t longest, const std::vector<std::size_t>& wanted)
    {
        widths_ = wanted;
        Places leading;
        const std::size_t lead = namesWithin(longest, wanted) + leading_ * between;
        for (std::size_t place = 0; place < shown_.size(); ++place) {
            const std::size_t left = place < leading_ ? longest : std::max(width_ - std::min(width_, lead), fewest);
            if (isName(place))
                widths_[place] = std::min(widths_[place], left);
            if (place < leading_)
                leading.push_back(place);
        }
        panels_.assign(1, leading);
        std::size_t used = lead;
        for (std::size_t place = leading_; place < shown_.size();)
            place = addPart(place, leading, lead, used);
        return panels_.size();
    }

    /// Adds the columns of a part that begins there, to the last panel where they fit; says where the next part begins.
    std::size_t addPart(std::size_t place, const Places& leading, std::size_t lead, std::size_t& used)
    {
        const std::size_t end = endOfPart(place);
        // The first column of a line has nothing before it.
        const auto fits = [&](std::size_t more) { return used + more <= width_ + between; };
        std::size_t all = 0;
        for (std::size_t i = place; i < end; ++i)
            all += taken(i);
        bool begins = !fits(all);
        for (; place < end; ++place, begins = false) {
            if ((begins || !fits(taken(place))) && panels_.back().size() > leading_) {
                panels_.push_back(leading);
                used = lead;
            }
            panels_.back().push_back(place);
            used += taken(place);
        }
        return end;
    }

    [[nodiscard]] std::size_t endOfPart(std::size_t place) const
    {
        std::size_t end = place;
        while (end < shown_.size() && column(end).part == column(place).part)
            ++end;
        return end;
    }

    void writeRow(std::size_t row, const Places& places, std::string& out)
    {
        for (const std::size_t place : places) {
            const std::size_t cell = row * shown_.size() + place;
            const std::size_t begin = cell == 0 ? 0 : ends_[cell - 1];
            writeCell(place, std::string_view(text_).substr(begin, ends_[cell] - begin), out);
        }
        out.erase(out.find_last_not_of(' ') + 1);
        out += '\n';
    }

    void writeCell(std::size_t place, std::string_view cell, std::string& out)
    {
        if (displayWidth(cell) > widths_[place])
            cell = shortNames_[place].of(cell, widths_[place]);
        const bool left = isName(place);
        const std::size_t padding = widths_[place] - displayWidth(cell);
        out.append(place == 0 ? 0 : between, ' ').append(left ? 0 : padding, ' ').append(cell);
        out.append(left ? padding : 0, ' ');
    }

    const Table& table_;
    std::size_t width_;
    std::vector<std::size_t> shown_; ///< columns
    std::size_t leading_ = 0;        ///< how many names begin the row
    std::vector<std::size_t> widths_;
    std::string text_;              ///< all cells, row by row, titles first
    std::vector<std::size_t> ends_; ///< where each cell ends in text_
    std::vector<ShortNames> shortNames_;
    std::vector<Places> panels_;
};

} // namespace

void writeText(const Table& table, std::size_t width, std::string& out) { TextTable(table, width).write(out); }

} // namespace vexroc
