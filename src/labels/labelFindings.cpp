#include "labels/labelFindings.h"

#include "labels/LabelWords.h"

#include <algorithm>
#include <map>

namespace ROCALG_920::labels {

namespace {

using Spelling = LabelColumn::Spelling;

class Search {
public:
    Search(const LabelColumn& column, std::span<const State> states, vexroc_voice voice)
        : column_(column), states_(states), words_(column, voice)
    {
    }

    std::vector<LabelFinding> findings()
    {
        findMissingWords();
        findSpellings();
        findLeadingZeros();
        return std::move(findings_);
    }

private:
    /// Empty cells are no words.
    void findMissingWords()
    {
        std::vector<LabelColumn::Value> found;
        for (std::size_t s = 0; s < column_.spellings().size(); ++s)
            if (const Spelling& spelling = column_.spellings()[s];
                spelling.value == LabelColumn::missing && !trimmed(spelling.text).empty())
                found.push_back({static_cast<int>(s), spelling.count});
        if (!found.empty())
            findings_.push_back({"missing-words", words_.inBrackets(std::move(found))});
    }

    void findSpellings()
    {
        std::map<std::string, std::vector<int>> alike;
        for (int v = 0; v < static_cast<int>(column_.values().size()); ++v)
            if (!spellingOf(v).number)
                alike[looks(spellingOf(v).text)].push_back(v);
        add("spellings", alike);
    }

    void findLeadingZeros()
    {
        std::map<Decimal, std::vector<int>> alike; // values that are numbers but for their zeros, and the number itself
        for (int v = 0; v < static_cast<int>(column_.values().size()); ++v) {
            const std::string plain = withoutLeadingZeros(spellingOf(v));
            const std::optional<Decimal> number = Decimal::of(plain, column_.decimalSign());
            if (plain.empty() || !number)
                continue;
            std::vector<int>& values = alike[*number];
            if (const int itself = column_.find(plain); values.empty() && itself != LabelColumn::missing)
                values.push_back(itself);
            values.push_back(v);
        }
        add("leading-zeros", alike);
    }

    [[nodiscard]] const Spelling& spellingOf(int value) const
    {
        return column_.spellingOf(column_.values()[static_cast<std::size_t>(value)]);
    }

    /// A text without the zeros before its first digit; empty where there are none.
    [[nodiscard]] static std::string withoutLeadingZeros(const Spelling& spelling)
    {
        if (spelling.number || spelling.kind == TextKind::value)
            return {};
        std::string text(trimmed(spelling.text));
        const std::size_t first = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
        const std::size_t length = text.size();
        while (text.size() > first + 1 && text[first] == '0' && text[first + 1] >= '0' && text[first + 1] <= '9')
            text.erase(first, 1);
        return text.size() < length ? text : "";
    }

    /// One finding of all sets of values that are alike, though not in the same state.
    template <class Likeness>
    void add(const char* code, const std::map<Likeness, std::vector<int>>& alike)
    {
        constexpr std::size_t most = 5;
        std::vector<std::string> details;
        for (const auto& [likeness, values] : alike) {
            std::vector<LabelColumn::Value> list;
            for (const int value : values)
                list.push_back(column_.values()[static_cast<std::size_t>(value)]);
            if (areDifferent(values))
                details.push_back(words_.inBrackets(std::move(list)));
        }
        if (!details.empty())
            findings_.push_back({code, joined(details, "; ", most)});
    }

    [[nodiscard]] bool areDifferent(const std::vector<int>& values) const
    {
        const auto stateOf = [this](int value) { return states_[static_cast<std::size_t>(value)]; };
        const auto isAsFirst = [&](int value) { return stateOf(value) == stateOf(values.front()); };
        return values.size() > 1 && (states_.empty() || !std::ranges::all_of(values, isAsFirst));
    }

    const LabelColumn& column_;
    std::span<const State> states_;
    LabelWords words_;
    std::vector<LabelFinding> findings_;
};

} // namespace

std::vector<LabelFinding> findingsOf(const LabelColumn& column, std::span<const State> states, vexroc_voice voice)
{
    return Search(column, states, voice).findings();
}

} // namespace ROCALG_920::labels
