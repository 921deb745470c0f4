#pragma once

#include "labels/Decimal.h"
#include "labels/MissingWords.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ROCALG_920::labels {

/// How a text is taken.
enum class TextKind {
    text, ///< may be a missing word, or spell a number
    value ///< is a value as it stands, and equals itself only
};

/// The texts of a column: which of them are one value, and which are missing.
///
/// Life: add every different text with its rows, name those that must be values, settle; then ask.
class LabelColumn {
public:
    static constexpr int missing = -1;

    struct Spelling {
        std::string text;
        TextKind kind;
        long long count = 0;
        std::optional<Decimal> number = {}; ///< what it spells, once settled
        int value = missing;
    };
    struct Value {
        int first;       ///< the spelling of it that came first
        long long count; ///< rows with any of its spellings
    };

    LabelColumn(std::string name, MissingWords words, char decimalSign)
        : name_(std::move(name)), words_(std::move(words)), decimalSign_(decimalSign)
    {
    }

    /// The index of the spelling, in the order in which they came first.
    int add(std::string_view text, TextKind kind, long long count);
    /// From now on this is no missing word; settle has to follow.
    void nameValue(std::string_view text) { named_.emplace_back(text); }
    void settle();

    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] char decimalSign() const noexcept { return decimalSign_; }
    [[nodiscard]] const std::vector<Spelling>& spellings() const noexcept { return spellings_; }
    /// Ascending: numbers, then texts byte by byte.
    [[nodiscard]] const std::vector<Value>& values() const noexcept { return values_; }
    [[nodiscard]] const Spelling& spellingOf(const Value& value) const { return spellings_[std::size_t(value.first)]; }
    /// The value that a text names; `missing` when no row holds it.
    [[nodiscard]] int find(std::string_view text) const;
    /// Is a missing word of this column spelled so? Naming it makes it a value.
    [[nodiscard]] bool holdsAsMissing(std::string_view text) const;

private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
    };
    using Index = std::unordered_map<std::string, int, TextHash, std::equal_to<>>;

    [[nodiscard]] bool isNamed(const Spelling& spelling) const;
    [[nodiscard]] bool isMissingWord(const Spelling& spelling) const;
    void makeDoubtfulWordsMissing();
    void arrange(std::vector<int> present);

    std::string name_;
    MissingWords words_;
    char decimalSign_;
    std::vector<Spelling> spellings_;
    std::array<Index, 2> indexes_; ///< of spellings_ by text, for each kind
    std::vector<std::string> named_;
    std::vector<Value> values_;
};

} // namespace ROCALG_920::labels
