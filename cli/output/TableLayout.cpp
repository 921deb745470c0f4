#include "cli/output/TableLayout.h"

#include "cli/output/TableForms.h"

#include <algorithm>

namespace vexroc {

namespace {

constexpr std::size_t fewest = 8;  // places that a long name keeps
constexpr std::size_t plenty = 12; // places that it keeps where only the number of panels is at stake

} // namespace

TableLayout::TableLayout(const Table& table, std::size_t width) : table_(table), width_(width)
{
    for (std::size_t c = 0; c < table.columns().size(); ++c)
        if (isShown(c))
            shown_.push_back(c);
    while (leading_ < shown_.size() && isName(leading_))
        ++leading_;
    if (leading_ < shown_.size() && column(leading_).role == CellRole::cutOff)
        ++leading_;
    spell();
    fitNames();
}

std::string_view TableLayout::cell(std::size_t line, std::size_t place) const
{
    const std::size_t cell = line * shown_.size() + place;
    const std::size_t begin = cell == 0 ? 0 : ends_[cell - 1];
    return std::string_view(text_).substr(begin, ends_[cell] - begin);
}

bool TableLayout::isShown(std::size_t column) const
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

void TableLayout::spell()
{
    widths_.resize(shown_.size());
    for (std::size_t place = 0; place < shown_.size(); ++place)
        add(place, std::string(column(place).title));
    for (std::size_t row = 0; row < table_.rows(); ++row)
        for (std::size_t place = 0; place < shown_.size(); ++place)
            add(place, forPeople(table_.at(row, shown_[place]), column(place).role));
}

void TableLayout::add(std::size_t place, const std::string& cell)
{
    widths_[place] = std::max(widths_[place], displayWidth(cell));
    text_ += cell;
    ends_.push_back(text_.size());
}

/// Gives what leads as many places as leave two fifths of the width to the others; names get fewer, but plenty, where
/// that saves panels.
void TableLayout::fitNames()
{
    const std::vector<std::size_t> wanted = widths_;
    std::size_t room = leading_ == shown_.size() ? width_ : width_ * 3 / 5;
    room -= std::min(room, leading_ * between);
    std::size_t longest = std::max(room, fewest);
    while (longest > fewest && leadWithin(longest, wanted) > room)
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

/// The places of the leading columns together, no name longer than that.
std::size_t TableLayout::leadWithin(std::size_t longest, const std::vector<std::size_t>& wanted) const
{
    std::size_t sum = 0;
    for (std::size_t place = 0; place < leading_; ++place)
        sum += isName(place) ? std::min(wanted[place], longest) : wanted[place];
    return sum;
}

/// Sets the columns in panels, with leading names no longer than that; says how many panels these are.
std::size_t TableLayout::makePanels(std::size_t longest, const std::vector<std::size_t>& wanted)
{
    widths_ = wanted;
    Places leading;
    const std::size_t lead = leadWithin(longest, wanted) + leading_ * between;
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
std::size_t TableLayout::addPart(std::size_t place, const Places& leading, std::size_t lead, std::size_t& used)
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

std::size_t TableLayout::endOfPart(std::size_t place) const
{
    std::size_t end = place;
    while (end < shown_.size() && column(end).part == column(place).part)
        ++end;
    return end;
}

} // namespace vexroc
