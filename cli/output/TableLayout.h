#pragma once

#include "cli/output/Table.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// A table for people: spelled once, then set as wide as its widest cells, in as few panels as the width allows. What
/// says which row it is, the leading names and a cut-off behind them, stands in each panel.
class TableLayout {
public:
    /// Refers to the table. `width` counts places in a line.
    TableLayout(const Table& table, std::size_t width);

    static constexpr std::size_t between = 2; ///< places between columns
    using Places = std::vector<std::size_t>;  ///< of columns among those shown

    [[nodiscard]] std::span<const Places> panels() const noexcept { return panels_; }
    /// The lines of a panel: the titles are number 0.
    [[nodiscard]] std::size_t lines() const noexcept { return table_.rows() + 1; }
    /// Visible text, not shortened.
    [[nodiscard]] std::string_view cell(std::size_t line, std::size_t place) const;
    [[nodiscard]] bool isName(std::size_t place) const { return column(place).role == CellRole::name; }
    /// Of a column; names that are longer are to be shortened.
    [[nodiscard]] std::size_t width(std::size_t place) const { return widths_[place]; }
    [[nodiscard]] std::size_t columns() const noexcept { return shown_.size(); }

private:
    [[nodiscard]] const TableColumn& column(std::size_t place) const { return table_.columns()[shown_[place]]; }
    [[nodiscard]] bool isShown(std::size_t column) const;
    void spell();
    void add(std::size_t place, const std::string& cell);
    void fitNames();
    [[nodiscard]] std::size_t leadWithin(std::size_t longest, const std::vector<std::size_t>& wanted) const;
    std::size_t makePanels(std::size_t longest, const std::vector<std::size_t>& wanted);
    std::size_t addPart(std::size_t place, const Places& leading, std::size_t lead, std::size_t& used);
    [[nodiscard]] std::size_t endOfPart(std::size_t place) const;
    /// What a column takes in a panel, with what parts it from the one before.
    [[nodiscard]] std::size_t taken(std::size_t place) const { return widths_[place] + between; }

    const Table& table_;
    std::size_t width_;
    std::vector<std::size_t> shown_; ///< columns
    std::size_t leading_ = 0;        ///< how many columns say which row it is
    std::vector<std::size_t> widths_;
    std::string text_;              ///< all cells, row by row, titles first
    std::vector<std::size_t> ends_; ///< where each cell ends in text_
    std::vector<Places> panels_;
};

} // namespace vexroc
