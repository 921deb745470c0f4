#pragma once

#include "labels/LabelColumn.h"
#include "vexrocproc/remarks.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ROCALG_920::labels {

/// What is said of a column's values, as one language spells it.
class LabelWords {
public:
    /// The column, settled, must outlive the object.
    LabelWords(const LabelColumn& column, vexroc_voice voice) : column_(column), voice_(voice) {}

    /// A text in the quotation marks of the voice, cut when very long.
    [[nodiscard]] std::string quoted(std::string_view text) const;
    /// "column 'outcome'".
    [[nodiscard]] std::string where() const;
    /// "'ill' (3), 'well' (2)": the commonest first, and then how many more.
    [[nodiscard]] std::string listed(std::vector<LabelColumn::Value> values) const;
    /// "'ill': 3, 'well': 2": the same for a place in brackets.
    [[nodiscard]] std::string inBrackets(std::vector<LabelColumn::Value> values) const;

    [[nodiscard]] std::string neverHolds(std::string_view name) const;
    [[nodiscard]] std::string namedTwice(std::string_view first, std::string_view second, bool onBothSides) const;
    [[nodiscard]] std::string statesNotSaid(const std::vector<std::string>& positive) const;
    /// Arguments that would do: the negative value named, and all others negative.
    [[nodiscard]] std::array<std::string, 2> waysOn(const std::vector<std::string>& positive) const;

private:
    using Item = std::string (*)(const std::string& text, long long count);
    [[nodiscard]] std::string commonest(std::vector<LabelColumn::Value> values, Item item) const;
    [[nodiscard]] bool isPlain(std::string_view text) const;
    [[nodiscard]] std::array<std::string, 2> eitherWay() const;
    [[nodiscard]] std::string asArgument(const std::vector<std::string>& texts) const;
    [[nodiscard]] std::string likelyPositive() const;
    [[nodiscard]] std::string likelyNegative(const std::vector<std::string>& positive) const;

    const LabelColumn& column_;
    vexroc_voice voice_;
};

/// At most `most` of the items, and then how many more there are.
std::string joined(std::span<const std::string> items, std::string_view between, std::size_t most);

/// Text without letter case and outer blanks, those that do not break a line among them: what looks alike.
std::string looks(std::string_view text);

} // namespace ROCALG_920::labels
